#pragma once

#include <windows.h>

#include <oleauto.h>

namespace vexil::platform {

/// A variant that frees what it holds.
class Variant {
public:
    Variant() { VariantInit(&value_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&value_); }
    VARIANT* address() { return &value_; }
    [[nodiscard]] const VARIANT& get() const { return value_; }

private:
    VARIANT value_;
};

} // namespace vexil::platform
