#pragma once

#include <memory>

namespace vexil::module::video_card {

/// Shared ownership of a COM object.
template <typename T>
using ComShared = std::shared_ptr<T>;

/// Takes over the one reference that the maker of `object` handed out; the last owner calls `Release` once.
template <typename T>
[[nodiscard]] ComShared<T> shareCom(T* object) {
    return object == nullptr ? ComShared<T>() : ComShared<T>(object, [](T* owned) { owned->Release(); });
}

} // namespace vexil::module::video_card
