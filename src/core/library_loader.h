#pragma once

#include <cstdint>

/// Loads, resolves and releases a dynamic library. The suite's platform layer hands one out, and the module
/// has one of its own; both stand in the global namespace and are unrelated to `vexil::core::Module`.
class Module {
public:
    virtual ~Module() = default;
    /// `name` is UTF-8, a bare name or a path. Null if the library cannot be loaded.
    virtual void* load(const char* name, std::uint32_t flags) = 0;
    /// Null if the library has no such symbol.
    virtual void* resolve(void* library, const char* symbol) = 0;
    virtual void release(void* library) = 0;
};
