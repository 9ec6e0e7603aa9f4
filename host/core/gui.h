#pragma once

#include <functional>
#include <optional>
#include <string>

namespace vexil::host {

class Language;

/// The GUI while work that may need it goes on. Called from the thread of the work.
class GuiSession {
public:
    virtual ~GuiSession() = default;
    /// Names the test that runs, for the window that stands behind those of a test.
    virtual void showTest(const std::string& title) = 0;
};

/// The GUI that a host lends to tests which ask the user or draw. It costs nothing until `run`.
class Gui {
public:
    using Work = std::function<void(GuiSession&)>;

    virtual ~Gui() = default;

    /// Whether somebody would see a window.
    [[nodiscard]] virtual bool hasDisplay() const = 0;

    /// Runs the work on a thread of its own and the GUI on the calling one, which must be the thread that the
    /// process began with. Returns when the work has ended, and throws what it threw. The texts of `language`
    /// answer the keys that are translated under `translationContext`. `visible` shows windows; without it
    /// they are made and drawn, and nobody sees them.
    virtual void run(bool visible, const Language& language, const std::string& translationContext,
                     const Work& work) = 0;
};

/// The user's own choice of Qt's plug-in for windows, which goes before what the machine offers.
[[nodiscard]] std::optional<std::string> chosenGuiPlugins();

/// Whether somebody would see a window that Qt makes in this process.
[[nodiscard]] bool displayCanBeReached();

} // namespace vexil::host
