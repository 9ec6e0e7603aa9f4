#pragma once

#include "core/shared_api.h"

#include <string>

/// The suite's look, from a library of its own ("style_manager").
class VEXIL_SHARED_API StyleManager {
public:
    /// The one style object of the process.
    static StyleManager& instance();
    StyleManager(const StyleManager&) = delete;
    StyleManager& operator=(const StyleManager&) = delete;

    /// The application's stylesheet, in Qt's language for it.
    [[nodiscard]] std::string Stylesheet() const;

private:
    StyleManager() = default;
};
