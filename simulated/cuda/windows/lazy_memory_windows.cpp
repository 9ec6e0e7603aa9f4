#include "simulated/cuda/lazy_memory.h"

#include <windows.h>

#include <utility>

namespace vexil::simulated::cuda {

namespace {

constexpr std::size_t pageSize = 0x1000;

std::size_t wholePages(std::size_t bytes) { return (bytes + pageSize - 1) / pageSize * pageSize; }

} // namespace

LazyMemory::LazyMemory(std::size_t bytes) {
    const std::size_t inner = wholePages(bytes);
    if (inner < bytes || inner + 2 * pageSize < inner) {
        return;
    }
    void* const outer = VirtualAlloc(nullptr, inner + 2 * pageSize, MEM_RESERVE, PAGE_NOACCESS);
    if (outer == nullptr) {
        return;
    }
    auto* const first = static_cast<std::uint8_t*>(outer) + pageSize;
    // Committed pages count against the page file, but take memory only once they are touched.
    if (VirtualAlloc(first, inner, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
        VirtualFree(outer, 0, MEM_RELEASE);
        return;
    }
    begin_ = first;
    size_ = bytes;
}

void LazyMemory::release() noexcept {
    if (begin_ != nullptr) {
        VirtualFree(begin_ - pageSize, 0, MEM_RELEASE);
    }
    begin_ = nullptr;
    size_ = 0;
}

LazyMemory::LazyMemory(LazyMemory&& other) noexcept
    : begin_(std::exchange(other.begin_, nullptr)), size_(std::exchange(other.size_, 0)) {}

LazyMemory& LazyMemory::operator=(LazyMemory&& other) noexcept {
    if (this != &other) {
        release();
        begin_ = std::exchange(other.begin_, nullptr);
        size_ = std::exchange(other.size_, 0);
    }
    return *this;
}

LazyMemory::~LazyMemory() { release(); }

} // namespace vexil::simulated::cuda
