#pragma once

#include "core/device.h"
#include "core/test.h"

namespace vexil::tests {

/// A test of any id that does nothing, for those who only look at it.
class PlainTest final : public core::Test {
public:
    explicit PlainTest(std::int32_t id, bool exclusive = false)
        : Test(descriptorOf(id)), exclusive_(exclusive) {}

    std::uint8_t execute(const core::TestRunArguments&) override { return core::TestResult::Passed; }
    [[nodiscard]] bool requiresExclusiveRun() const override {
        ++timesAsked;
        return exclusive_;
    }
    [[nodiscard]] bool isSupported(core::Device*, std::shared_ptr<core::Device>) const override {
        return true;
    }

    mutable int timesAsked = 0; ///< whether it must run alone

private:
    static core::TestDescriptor descriptorOf(std::int32_t id) {
        core::TestDescriptor descriptor;
        descriptor.id = id;
        return descriptor;
    }

    bool exclusive_;
};

/// A device that has an id and nothing else.
class PlainDevice final : public core::Device {
public:
    explicit PlainDevice(std::string id) { id_ = std::move(id); }

    [[nodiscard]] std::string id() const override { return id_; }
    [[nodiscard]] std::string displayName() const override { return {}; }
    [[nodiscard]] bool hasUdi() const override { return false; }
    [[nodiscard]] std::string udi() const override { return {}; }
    [[nodiscard]] std::vector<core::KeyValue> properties() const override { return {}; }
    [[nodiscard]] std::vector<std::string> notices() const override { return {}; }
    [[nodiscard]] bool isPresent() const override { return true; }
    void refresh() override {}
};

} // namespace vexil::tests
