#pragma once

#include "core/library_loader.h"

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace vexil::test {

/// "shcore.dll", which tells the resolution of a monitor, as a test wants it.
struct FakeShcore {
    bool there = true;
    bool hasAwareness = true;
    bool hasDpi = true;
    std::int32_t answer = 0;
    std::uint32_t dpi = 150;
    std::vector<std::string> calls;
};

/// A loader that has it. One at a time: the library's functions take no object.
class FakeShcoreLoader : public Module {
public:
    explicit FakeShcoreLoader(FakeShcore& library) { shcore_ = &library; }
    FakeShcoreLoader(const FakeShcoreLoader&) = delete;
    FakeShcoreLoader& operator=(const FakeShcoreLoader&) = delete;
    ~FakeShcoreLoader() { shcore_ = nullptr; }

    void* load(const char* name, std::uint32_t flags) override {
        shcore_->calls.push_back("load " + std::string(name) + " " + std::to_string(flags));
        return shcore_->there ? this : nullptr;
    }
    void* resolve(void*, const char* symbol) override {
        if (std::strcmp(symbol, "SetProcessDpiAwareness") == 0 && shcore_->hasAwareness) {
            return reinterpret_cast<void*>(&setAwareness);
        }
        return std::strcmp(symbol, "GetDpiForMonitor") == 0 && shcore_->hasDpi
                   ? reinterpret_cast<void*>(&getDpi)
                   : nullptr;
    }
    void release(void*) override { shcore_->calls.emplace_back("release"); }

private:
    static std::int32_t setAwareness(std::int32_t value) {
        shcore_->calls.push_back("awareness " + std::to_string(value));
        return -1; // already decided: not looked at
    }
    static std::int32_t getDpi(void* monitor, std::int32_t type, std::uint32_t* x, std::uint32_t* y) {
        shcore_->calls.push_back("dpi type " + std::to_string(type));
        *x = shcore_->dpi + static_cast<std::uint32_t>(reinterpret_cast<std::uintptr_t>(monitor));
        *y = 1;
        return shcore_->answer;
    }

    static inline FakeShcore* shcore_ = nullptr;
};

} // namespace vexil::test
