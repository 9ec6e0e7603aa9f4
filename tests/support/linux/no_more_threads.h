#pragma once

#include <pthread.h>

#include <cstddef>

namespace vexil::tests {

/// No thread can be made while it lives: each would need a stack that is larger than all addresses there are.
class NoMoreThreads {
public:
    NoMoreThreads() { swapStackSize(std::size_t{1} << 60); }
    NoMoreThreads(const NoMoreThreads&) = delete;
    NoMoreThreads& operator=(const NoMoreThreads&) = delete;
    ~NoMoreThreads() { swapStackSize(before_); }

private:
    void swapStackSize(std::size_t size) {
        pthread_attr_t attributes;
        pthread_getattr_default_np(&attributes);
        pthread_attr_getstacksize(&attributes, &before_);
        pthread_attr_setstacksize(&attributes, size);
        pthread_setattr_default_np(&attributes);
        pthread_attr_destroy(&attributes);
    }

    std::size_t before_ = 0;
};

} // namespace vexil::tests
