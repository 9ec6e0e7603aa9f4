#include "module/video_card/statistics/nvapi/nvapi_runtime.h"

#include "core/never_destroyed.h"
#include "core/sal.h"
#include "platform/display_driver_library.h"
#include "platform/library_names.h"
#include "platform/shared_library.h"

namespace vexil::module::video_card {

namespace {

class DisplayDriverLoader final : public ::Module {
public:
    void* load(const char* name, std::uint32_t) override { return platform::openDisplayDriverLibrary(name); }
    void* resolve(void* library, const char* symbol) override {
        return platform::librarySymbol(library, symbol);
    }
    void release(void* library) override { platform::closeLibrary(library); }
};

} // namespace

const NvapiRuntime& systemNvapi() {
    // Never destroyed: a source that outlives the other statics still gives its reference back.
    static core::NeverDestroyed<DisplayDriverLoader> loader;
    static core::NeverDestroyed<NvapiAccess> access(loader.get(), platform::nvapiLibrary());
    static const NvapiRuntime runtime{access.get(), *get_module()};
    return runtime;
}

} // namespace vexil::module::video_card
