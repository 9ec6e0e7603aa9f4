#include "system/cim/cim_value.h"

namespace vexil::system {

namespace {

struct RowText {
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(std::uint16_t number) const { return std::to_string(number); }
    std::string operator()(std::uint8_t number) const { return std::to_string(number); }
    std::string operator()(const std::string& text) const { return text.substr(0, cimTextLimit); }
    std::string operator()(const std::vector<std::string>& texts) const {
        std::string joined;
        for (const auto& text : texts) {
            joined.append(text, 0, cimTextLimit).append(1, ';');
        }
        return joined;
    }
    std::string operator()(const std::vector<std::uint8_t>& bytes) const {
        return {bytes.begin(), bytes.end()};
    }
    std::string operator()(std::int16_t) const { return {}; }
    std::string operator()(bool) const { return {}; }
    std::string operator()(std::monostate) const { return {}; }
};

struct QueryText {
    std::string operator()(std::int32_t number) const { return std::to_string(number); }
    std::string operator()(std::int16_t number) const { return std::to_string(number); }
    std::string operator()(bool value) const { return value ? "True" : "False"; }
    std::string operator()(const std::string& text) const { return text; }
    template <typename Other>
    std::string operator()(const Other&) const {
        return {};
    }
};

} // namespace

std::string cimRowText(const CimValue& value) { return std::visit(RowText{}, value); }

std::string wmiQueryText(const CimValue& value) { return std::visit(QueryText{}, value); }

} // namespace vexil::system
