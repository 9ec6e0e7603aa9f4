#pragma once

#include "core/sal.h"

namespace vexil::sal {

/// Device names and identifiers.
class TextHandler final : public StringHandler {
public:
    /// Keeps letters and digits; any run of other characters becomes one "_".
    void makeIdentifier(const std::string& text, std::string& identifier) override;
    /// Drops "(R)", "(TM)", "(C)" and the signs for them, and puts one blank for any run of blanks.
    void normalize(std::string& text) override;
    /// The letters A to Z only, whatever the locale.
    void toLower(std::string& text) override;
};

class NumberText final : public NumberHandler {
public:
    bool parse(std::uint32_t& number, const std::string& text, BaseManipulator base) override;
    void toText(std::string& text, std::uint32_t number) override;
};

} // namespace vexil::sal
