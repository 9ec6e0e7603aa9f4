#pragma once

#include "host/core/card.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace vexil::core {
class DiagnosticDispatcher;
class Module;
} // namespace vexil::core

namespace vexil::host {

/// What a card says of itself at one moment. A value that nothing on the machine tells is empty.
struct LiveValues {
    std::optional<std::int64_t> temperatureCelsius;
    std::optional<std::uint64_t> usagePercent;
    std::optional<std::uint64_t> freeMemoryBytes;
};

/// One place that live values come from.
class LiveSource {
public:
    virtual ~LiveSource() = default;
    /// Fills in what it knows of the card and leaves the rest alone.
    virtual void read(const Card& card, LiveValues& values) = 0;
};

/// The module's thermal tool, which reads the temperature once and sends it as a line of JSON text.
class ThermalToolSource final : public LiveSource {
public:
    explicit ThermalToolSource(const core::Module& module) : module_(module) {}
    void read(const Card& card, LiveValues& values) override;

private:
    const core::Module& module_;
};

/// The sources of the machine in place, with so many hardware threads; the tool runs on a worker of the
/// dispatcher, so without one there is no temperature.
[[nodiscard]] std::vector<std::unique_ptr<LiveSource>> liveSources(const core::Module& module,
                                                                   unsigned hardwareThreads);

/// The values of each card, in the order of the cards.
[[nodiscard]] std::vector<LiveValues> readLiveValues(const std::vector<Card>& cards,
                                                     const std::vector<std::unique_ptr<LiveSource>>& sources);

/// The temperature in the tool's line; nothing for "--". A name with quotation marks in it goes into the line
/// as it stands, so the line need not be valid JSON.
[[nodiscard]] std::optional<std::int64_t> temperatureOf(std::string_view line);

} // namespace vexil::host
