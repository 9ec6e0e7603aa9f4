#include "host/gui/language_translator.h"

#include <string_view>
#include <utility>

namespace vexil::host {

LanguageTranslator::LanguageTranslator(const Language& language, std::string context)
    : language_(language), context_(std::move(context)) {}

QString LanguageTranslator::translate(const char* context, const char* sourceText, const char*, int) const {
    if (context == nullptr || sourceText == nullptr || context != context_) {
        return {};
    }
    const std::string_view key = sourceText;
    if (!language_.texts().contains(key)) {
        return {};
    }
    return QString::fromStdString(language_.text(key));
}

} // namespace vexil::host
