#include "module/video_card/stress/stress_statistics.h"

#include "core/message_keys.h"
#include "core/test_reporter.h"
#include "module/video_card/vocabulary.h"

#include <iomanip>
#include <sstream>
#include <string>

namespace vexil::module::video_card {

namespace {

/// In whole numbers; a value that is no figure of a working card is shown as "--".
std::string item(const std::string& key, float value, const std::string& unit) {
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text << " \t/\t " << key << ": ";
    if (value > 0) {
        text << std::fixed << std::setprecision(0) << value;
    } else {
        text << "--";
    }
    text << unit;
    return text.str();
}

struct Lines {
    std::string minimum = keys::minimum;
    std::string maximum = keys::maximum;
    std::string average = keys::average;

    template <typename Value>
    void append(const std::string& key, const MeasuredValue<Value>& measured, const std::string& unit) {
        minimum += item(key, static_cast<float>(measured.minimum), unit);
        maximum += item(key, static_cast<float>(measured.maximum), unit);
        // In the value's own arithmetic: whole numbers are divided as such.
        average += item(key, static_cast<float>(measured.sum / static_cast<Value>(measured.count)), unit);
    }
};

template <typename Value>
bool tells(const MeasuredValue<Value>& measured) {
    return measured.count != 0 && (measured.minimum != 0 || measured.maximum != 0);
}

} // namespace

void StressStatistics::addSample(const StressSample& sample) {
    if (sample.fpsValid) {
        fps.add(sample.fps);
    }
    if (sample.temperatureValid) {
        temperature.add(sample.temperature);
    }
    if (sample.usageValid) {
        usage.add(sample.usage);
    }
}

void StressStatistics::reportResults() const {
    Lines lines;
    if (tells(temperature)) {
        lines.append(keys::stressInfoTemperature, temperature, vocabulary::celsius);
    }
    if (tells(usage)) {
        lines.append(keys::stressInfoGpuUsage, usage, "%");
    }
    if (fps.count != 0) {
        lines.append(keys::stressInfoFps, fps, "");
    }
    for (const auto& line : {lines.minimum, lines.maximum, lines.average}) {
        reporter_->report({0, line});
    }
}

} // namespace vexil::module::video_card
