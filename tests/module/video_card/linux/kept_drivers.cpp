// For the address sanitizer, in the program that loads and unloads the module again and again.

#include "core/shared_api.h"

#include <dlfcn.h>
#include <link.h>

#include <string_view>

/// What a Vulkan driver keeps for the process looks lost once the driver is unloaded, and its frames have no
/// names any more: the drivers, which are not ours, stay, and everything of ours is unloaded as ever.
extern "C" VEXIL_SHARED_API int dlclose(void* library) noexcept {
    static const auto close = reinterpret_cast<int (*)(void*)>(::dlsym(RTLD_NEXT, "dlclose"));
    link_map* place = nullptr;
    if (::dlinfo(library, RTLD_DI_LINKMAP, &place) == 0) {
        const std::string_view path = place->l_name;
        if (path.find("libvulkan") != path.npos || path.find("libVkLayer") != path.npos) {
            return 0;
        }
    }
    return close(library);
}
