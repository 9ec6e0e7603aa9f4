#pragma once

#include "simulated/direct3d/call_text.h"

#include <d3d11.h>

#include <atomic>
#include <utility>

namespace vexil::simulated {

/// An object of one of COM's interfaces in front of the real one: every call is handed on, with a word for
/// those who want to refuse it or to note it down. The derived class owns `real`.
template <typename Interface>
class ComProxy : public Interface {
public:
    explicit ComProxy(Interface* real) : real_(real) {}
    ComProxy(const ComProxy&) = delete;
    ComProxy& operator=(const ComProxy&) = delete;

    [[nodiscard]] Interface* real() const { return real_; }

protected:
    ~ComProxy() = default;

    /// A failure here is returned in place of the call.
    virtual HRESULT admit(const char*) { return S_OK; }
    /// Whether a call that has no result is made at all.
    virtual bool reachesCard(const char*) { return true; }
    /// Null where nobody listens.
    [[nodiscard]] virtual CallLog* log() const { return nullptr; }

    template <auto call, typename... Arguments>
    auto forward(const char* name, Arguments... arguments) {
        using Result = decltype((real_->*call)(arguments...));
        if constexpr (std::is_void_v<Result>) {
            if (reachesCard(name)) {
                (real_->*call)(arguments...);
                note(name, S_OK, arguments...);
            }
        } else if constexpr (std::is_same_v<Result, HRESULT>) {
            if (const HRESULT refused = admit(name); FAILED(refused)) {
                return refused;
            }
            const HRESULT result = (real_->*call)(arguments...);
            note(name, result, arguments...);
            return result;
        } else {
            const Result result = (real_->*call)(arguments...);
            note(name, S_OK, arguments...);
            return result;
        }
    }

private:
    template <typename... Arguments>
    void note(const char* name, HRESULT result, const Arguments&... arguments) {
        if (auto* const listener = log()) {
            CallText text(*listener, name);
            text.arguments(arguments...);
            listener->add(text.finish(result));
        }
    }

    Interface* real_;
};

/// The reference count of an object that deletes itself.
class ReferenceCount {
public:
    ULONG add() { return ++count_; }
    template <typename Object>
    ULONG release(Object* object) {
        const ULONG left = --count_;
        if (left == 0) {
            delete object;
        }
        return left;
    }

private:
    std::atomic<ULONG> count_ = 1;
};

} // namespace vexil::simulated
