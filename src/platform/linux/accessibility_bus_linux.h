#pragma once

#include <QtCore/QVariant>

#include <optional>

class QObject;

namespace vexil::platform {

// What a Linux desktop tells about accessibility over the session's message bus. Nothing where there is no
// bus, or nobody answers at once; no service is started by asking.

/// Whether a screen reader has announced itself to the accessibility registry.
[[nodiscard]] std::optional<bool> announcedScreenReader();

/// Whether the user wants more contrast, from the settings that the desktop portal shares with every program.
[[nodiscard]] std::optional<bool> wantsHighContrast();

/// Calls `slot` of `receiver` at each change of a setting.
void connectSettingsChanged(QObject& receiver, const char* slot);

} // namespace vexil::platform
