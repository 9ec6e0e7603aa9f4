#include "utils/parameters/test_parameter_duration_timeout.h"

#include "utils/parameters/number_text.h"

#include <exception>

namespace vexil::utils {

TestParameterDurationTimeout::TestParameterDurationTimeout()
    : TestParameter({"DURATION", "DURATION_(MINUTES)", "DEFINES_THE_TEST_DURATION_IN_MINUTES.", "5", 2, 0,
                     "[1:9999]"}) {}

bool TestParameterDurationTimeout::isValid(std::string text) const {
    try {
        const float number = floatOf(text);
        // Not "within": what is no number at all is neither below nor above.
        return !(number < 0.0F) && !(number > 9999.0F);
    } catch (const std::exception&) {
        return false;
    }
}

float TestParameterDurationTimeout::minutes() const {
    try {
        return floatOf(value_);
    } catch (const std::exception&) {
        return floatOf(description_.defaultValue);
    }
}

} // namespace vexil::utils
