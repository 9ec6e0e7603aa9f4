#pragma once

#include "core/device_scanner.h"
#include "core/diagnostic_dispatcher.h"
#include "core/test.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vexil::core {

class TestFactory {
public:
    virtual ~TestFactory() = default;
    /// A new test that knows no device yet, or null for an unknown id.
    [[nodiscard]] virtual std::unique_ptr<Test> createTest(std::int32_t id) const = 0;
};

struct ModuleVersion {
    std::uint8_t major = 0;
    std::uint16_t minor = 0;
    std::uint16_t patch = 0;
    std::string label;
};

/// The one object through which the host reaches everything in a module. Texts are keys.
class Module : public TestFactory {
public:
    [[nodiscard]] virtual std::int32_t moduleId() const = 0;
    [[nodiscard]] virtual std::string shortName() const = 0;
    [[nodiscard]] virtual std::string nameKey() const = 0;
    [[nodiscard]] virtual ModuleVersion moduleVersion() const = 0;
    [[nodiscard]] virtual std::shared_ptr<DeviceScanner> deviceScanner() const = 0;
    [[nodiscard]] virtual std::shared_ptr<DiagnosticDispatcher> dispatcher() const = 0;
    virtual void shutdown() = 0;
    [[nodiscard]] virtual std::vector<std::int32_t> testIds() const = 0;
    [[nodiscard]] virtual std::vector<std::int32_t> toolIds() const = 0;
    [[nodiscard]] virtual std::string description() const = 0;
};

} // namespace vexil::core
