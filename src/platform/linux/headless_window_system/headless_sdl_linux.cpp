// A window system for machines without a display.
//
// DXVK finds monitors, window sizes and the Vulkan extensions of a window through SDL, and takes
// no other way to them. Real SDL needs a display to answer: on a server, in a container or in CI,
// DXVK crashes before the first device is made, although nothing that draws into textures needs
// a window. This library carries SDL's name as its SONAME. Loaded before DXVK, it is what DXVK
// gets when it asks for SDL, and says "no displays, no extensions, no windows".
//
// It exports exactly the functions that DXVK 2.6 looks up (wsi_platform_sdl2_funcs.h); one less,
// and DXVK refuses to start. A process that shows a window must load real SDL instead.

#include <SDL.h>
#include <SDL_vulkan.h>

namespace {

constexpr int failed = -1;

} // namespace

extern "C" {

const char* SDL_GetError() { return "the headless window system has no displays"; }

int SDL_GetNumVideoDisplays() { return 0; }

int SDL_GetDisplayBounds(int, SDL_Rect*) { return failed; }

int SDL_GetDisplayMode(int, int, SDL_DisplayMode*) { return failed; }

int SDL_GetCurrentDisplayMode(int, SDL_DisplayMode*) { return failed; }

int SDL_GetDesktopDisplayMode(int, SDL_DisplayMode*) { return failed; }

SDL_DisplayMode* SDL_GetClosestDisplayMode(int, const SDL_DisplayMode*, SDL_DisplayMode*) { return nullptr; }

int SDL_GetWindowDisplayIndex(SDL_Window*) { return failed; }

int SDL_SetWindowDisplayMode(SDL_Window*, const SDL_DisplayMode*) { return failed; }

int SDL_SetWindowFullscreen(SDL_Window*, Uint32) { return failed; }

Uint32 SDL_GetWindowFlags(SDL_Window*) { return 0; }

void SDL_GetWindowSize(SDL_Window*, int* width, int* height) {
    if (width != nullptr) {
        *width = 0;
    }
    if (height != nullptr) {
        *height = 0;
    }
}

void SDL_SetWindowSize(SDL_Window*, int, int) {}

// DXVK loads the Vulkan loader itself: there is nothing to load for it here.
int SDL_Vulkan_LoadLibrary(const char*) { return 0; }

// DXVK takes a failure here as fatal; an empty list means offscreen rendering only.
SDL_bool SDL_Vulkan_GetInstanceExtensions(SDL_Window*, unsigned int* count, const char**) {
    *count = 0;
    return SDL_TRUE;
}

SDL_bool SDL_Vulkan_CreateSurface(SDL_Window*, VkInstance, VkSurfaceKHR*) { return SDL_FALSE; }

} // extern "C"
