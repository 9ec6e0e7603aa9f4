#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace vexil::core {

/// For a static object that is still used when the other statics of its library are gone: its destructor
/// never runs. It stands in the library's own memory, so that it leaves nothing behind when the library is
/// unloaded, as long as it owns nothing then.
template <typename Object>
class NeverDestroyed {
public:
    template <typename... Arguments>
    explicit NeverDestroyed(Arguments&&... arguments) {
        ::new (static_cast<void*>(place_)) Object(std::forward<Arguments>(arguments)...);
    }
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;
    ~NeverDestroyed() = default;

    [[nodiscard]] Object& get() { return *std::launder(reinterpret_cast<Object*>(place_)); }

private:
    alignas(Object) std::byte place_[sizeof(Object)];
};

} // namespace vexil::core
