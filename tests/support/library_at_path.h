#pragma once

#include "core/library_loader.h"
#include "platform/shared_library.h"

#include <cstdint>
#include <string>

namespace vexil::tests {

/// Opens one library under whatever name it is asked for.
class LibraryAtPath final : public ::Module {
public:
    explicit LibraryAtPath(std::string path) : path_(std::move(path)) {}

    void* load(const char*, std::uint32_t) override { return platform::openLibraryPath(path_); }
    void* resolve(void* library, const char* symbol) override {
        return platform::librarySymbol(library, symbol);
    }
    void release(void* library) override { platform::closeLibrary(library); }

private:
    std::string path_;
};

} // namespace vexil::tests
