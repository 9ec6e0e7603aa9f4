#include "plain_speed.h"

#include "module/video_card/cuda/cuda_runtime.h"
#include "platform/library_names.h"
#include "system/win_module.h"

#include <chrono>
#include <type_traits>

namespace vexil::hardware {

using namespace module::video_card;
using namespace cuda;

const CudaDriverCalls& driver() {
    static const CudaDriverCalls calls = [] {
        CudaDriverCalls loaded;
        if (void* const library = system::loadedOrFound(*getModule(), platform::cudaDriverLibrary())) {
            forEachDriverCall(loaded, [&](auto& entry, const char* symbol) {
                entry = reinterpret_cast<std::remove_reference_t<decltype(entry)>>(
                    getModule()->resolve(library, symbol));
            });
        }
        return loaded;
    }();
    return calls;
}

double secondsOf(const std::function<void()>& work) {
    CudaRuntime& cuda = CudaRuntime::instance();
    cuda.cudaDeviceSynchronize();
    const auto start = std::chrono::steady_clock::now();
    work();
    cuda.cudaDeviceSynchronize();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

PlainSpeed plainSpeed(std::uint8_t* block, std::size_t bytes) {
    const std::size_t half = bytes / 2;
    PlainSpeed speed;
    if (driver().cuMemsetD32 != nullptr) {
        const auto fill = [&] {
            driver().cuMemsetD32(reinterpret_cast<CUdeviceptr>(block), 0x5A5A5A5A, bytes / 4);
        };
        fill();
        speed.fill = static_cast<double>(bytes) / secondsOf(fill);
    }
    bool copied = false;
    const auto copy = [&] {
        copied = CudaRuntime::instance().cudaMemcpy(block, block + half, half, cudaMemcpyDeviceToDevice) ==
                 cudaSuccess;
    };
    copy();
    const double seconds = secondsOf(copy);
    speed.copy = copied ? 2 * static_cast<double>(half) / seconds : 0;
    return speed;
}

} // namespace vexil::hardware
