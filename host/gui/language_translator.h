#pragma once

#include "host/core/language.h"

#include <QTranslator>

#include <string>

namespace vexil::host {

/// Answers Qt's translation of the module's keys from the host's language. Other contexts are left to others:
/// Qt translates words of its own that look like keys ("OK").
class LanguageTranslator final : public QTranslator {
public:
    /// `language` must live as long as the translator.
    LanguageTranslator(const Language& language, std::string context);

    [[nodiscard]] QString translate(const char* context, const char* sourceText, const char* disambiguation,
                                    int n) const override;
    [[nodiscard]] bool isEmpty() const override { return false; }

private:
    const Language& language_;
    std::string context_;
};

} // namespace vexil::host
