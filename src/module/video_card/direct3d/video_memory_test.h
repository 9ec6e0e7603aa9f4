#pragma once

#include "core/test.h"
#include "module/video_card/device.h"

namespace vexil::module::video_card {

/// Fills video memory with surfaces and checks that what it wrote comes back: up to 50 surfaces of 4 MiB,
/// each written with a pseudo-random image, drawn from, read back and compared byte for byte. The images are
/// the same in every run.
class Dx11VideoMemoryTest : public core::Test {
public:
    Dx11VideoMemoryTest();

    std::uint8_t execute(const core::TestRunArguments& arguments) override;
    /// True for every card: one without Direct3D is told apart when the test runs.
    [[nodiscard]] bool isSupported(core::Device* device, std::shared_ptr<core::Device> holder) const override;

    /// How many surfaces to test. Anything but 0 means that the number cannot be told. The card's Direct3D
    /// lock is held by the caller.
    [[nodiscard]] virtual std::uint32_t
    surfaceCount(core::Device* device, const core::TestRunArguments& arguments, std::uint32_t* count) const;

protected:
    explicit Dx11VideoMemoryTest(core::TestDescriptor descriptor);

private:
    class Run;
};

} // namespace vexil::module::video_card
