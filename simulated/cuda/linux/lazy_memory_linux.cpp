#include "simulated/cuda/lazy_memory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <utility>

namespace vexil::simulated::cuda {

namespace {

std::size_t pageSize() {
    static const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return size;
}

std::size_t wholePages(std::size_t bytes) { return (bytes + pageSize() - 1) / pageSize() * pageSize(); }

} // namespace

LazyMemory::LazyMemory(std::size_t bytes) {
    const std::size_t inner = wholePages(bytes);
    if (inner < bytes || inner + 2 * pageSize() < inner) {
        return;
    }
    void* const outer =
        mmap(nullptr, inner + 2 * pageSize(), PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (outer == MAP_FAILED) {
        return;
    }
    auto* const first = static_cast<std::uint8_t*>(outer) + pageSize();
    if (mprotect(first, inner, PROT_READ | PROT_WRITE) != 0) {
        munmap(outer, inner + 2 * pageSize());
        return;
    }
    // Fewer faults while a kernel walks through memory for the first time; where it is refused, it is just
    // slower.
    madvise(first, inner, MADV_HUGEPAGE);
    begin_ = first;
    size_ = bytes;
}

void LazyMemory::release() noexcept {
    if (begin_ != nullptr) {
        munmap(begin_ - pageSize(), wholePages(size_) + 2 * pageSize());
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
