#pragma once

#include <cstdint>
#include <string>

namespace vexil::core {

/// How a host shows and addresses a parameter. `name` and `description` are message keys.
struct TestParameterDescription {
    std::string key; ///< the stable name by which the host addresses the parameter
    std::string name;
    std::string description;
    std::string defaultValue;
    std::int32_t type = 0;   ///< 0 truth value, 2 number, 3 choice from a list
    std::uint32_t flags = 0; ///< handed to the host as it stands
    std::string range;       ///< the permitted values, as "[1:9999]" or "[a|b]"
};

/// A named option of a test, held as text so that a host can show and set it without knowing its type.
class TestParameter {
public:
    explicit TestParameter(TestParameterDescription description);
    virtual ~TestParameter() = default;

    [[nodiscard]] virtual TestParameterDescription description() const;
    [[nodiscard]] virtual bool isValid(std::string text) const = 0;
    /// Takes a valid text as the new value; an invalid one changes nothing and is not reported.
    virtual void setValue(std::string text);

protected:
    TestParameterDescription description_;
    std::string value_;
};

} // namespace vexil::core
