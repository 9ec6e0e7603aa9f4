#include "utils/event_filters/high_contrast_event_filter.h"

#include "utils/accessibility/desktop_probes.h"
#include "utils/accessibility/dialog_environment.h"

namespace vexil::utils::event_filters {

namespace {

/// How Windows' message record begins; Qt hands such records out under the event type below.
struct MessageHead {
    void* window;
    std::uint32_t number;
};

constexpr const char* messageEventType = "windows_generic_MSG";
constexpr std::uint32_t themeChangedMessage = 794; // WM_THEMECHANGED

} // namespace

HighContrastEventFilter::HighContrastEventFilter() {
    accessibility::dialogEnvironment().desktop().watchTheme(*this, [this] { emit themeChanged(); });
}

bool HighContrastEventFilter::nativeEventFilter(const QByteArray& eventType, void* message, qintptr*) {
    if (eventType != messageEventType ||
        static_cast<const MessageHead*>(message)->number != themeChangedMessage) {
        return false;
    }
    emit themeChanged();
    return true;
}

void HighContrastEventFilter::readSystemColors(std::vector<QColor>& colors) const {
    colors = accessibility::readSystemColors();
}

} // namespace vexil::utils::event_filters
