#pragma once

#include <initializer_list>

namespace vexil::module::video_card {

/// A kernel as the host knows it: its name in the device code, and by its own address its key in the runtime.
class KernelName {
public:
    constexpr explicit KernelName(const char* name) : name_(name) {}
    KernelName(const KernelName&) = delete;
    KernelName& operator=(const KernelName&) = delete;

    [[nodiscard]] const char* name() const { return name_; }

protected:
    /// Each of `arguments` points to one argument of the kernel.
    void launch(unsigned blocks, unsigned threadsPerBlock, void** arguments) const;

private:
    const char* name_;
};

/// The host's wrapper of a kernel with that signature: pushes a call configuration of `blocks` blocks and
/// launches. Nothing is reported: a launch that fails shows only in what it left undone.
template <typename Signature>
class Kernel;

template <typename... Arguments>
class Kernel<void(Arguments...)> final : public KernelName {
public:
    using KernelName::KernelName;

    void operator()(unsigned blocks, Arguments... arguments) const { run(blocks, 1, arguments...); }
    /// For the kernels whose blocks have several threads.
    void run(unsigned blocks, unsigned threadsPerBlock, Arguments... arguments) const {
        void* addresses[] = {&arguments...};
        launch(blocks, threadsPerBlock, addresses);
    }
};

/// The device code of one translation unit: registered with its kernels when the library is loaded,
/// unregistered at exit. Objects of this class are static, and their order of construction is that of their
/// init priority.
class DeviceCode {
public:
    /// `ptx` is NUL-terminated and, like the kernels, lives as long as the library.
    DeviceCode(const char* ptx, std::initializer_list<const KernelName*> kernels);
    DeviceCode(const DeviceCode&) = delete;
    DeviceCode& operator=(const DeviceCode&) = delete;
    ~DeviceCode();

private:
    void* handle_;
};

/// Init priority of the nth fat binary. The standard leaves the order of translation units open, and theirs
/// is fixed.
#define VEXIL_FAT_BINARY(n) [[gnu::init_priority(2000 + (n))]]

} // namespace vexil::module::video_card
