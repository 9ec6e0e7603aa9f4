#include "core/style_manager.h"

#include "fonts.h"

namespace {

constexpr const char* styleSheet =
#include "style_sheet_text.inc"
    ;

} // namespace

StyleManager& StyleManager::instance() {
    static StyleManager manager;
    return manager;
}

std::string StyleManager::Stylesheet() const {
    registerFonts();
    return styleSheet;
}
