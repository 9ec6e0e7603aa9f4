#include "core/style_manager.h"

namespace {

/// A light look: dark text on white, one accent colour for what can be pressed.
constexpr const char* stylesheet = R"(
QWidget {
    color: #1f2933;
    background-color: #ffffff;
    font-family: "Lato";
    font-size: 14px;
}
QPushButton {
    color: #ffffff;
    background-color: #1769aa;
    border: 1px solid #1769aa;
    border-radius: 4px;
    padding: 6px 18px;
}
QPushButton:hover {
    background-color: #12568c;
}
QPushButton:focus {
    border: 2px solid #0b2d4a;
}
)";

} // namespace

StyleManager& StyleManager::instance() {
    static StyleManager manager;
    return manager;
}

std::string StyleManager::Stylesheet() const { return stylesheet; }
