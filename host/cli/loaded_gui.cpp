#include "host/cli/loaded_gui.h"

#include "host/core/exit_code.h"
#include "host/platform/gui_plugins.h"
#include "host/platform/libraries.h"

namespace vexil::host {

namespace {

void* open(const std::filesystem::path& file) {
    std::string reason;
    void* library = platform::openForProcess(file, reason);
    if (library == nullptr) {
        throw InternalError("the window of the test cannot be made: " + reason);
    }
    return library;
}

std::unique_ptr<Gui> load(const std::filesystem::path& programFolder) {
    void* library = open(programFolder / platform::guiFileName());
    const auto make = reinterpret_cast<Gui* (*)()>(platform::symbolOf(library, "makeHostGui"));
    if (make == nullptr) {
        throw InternalError(std::string("the window of the test cannot be made: ") + platform::guiFileName() +
                            " is not the program's library");
    }
    // Qt, which is there now, would end the process without it, on Windows behind a box that waits for a
    // click.
    if (const auto plugin = platform::neededGuiPlugin(); !plugin.empty()) {
        open(programFolder / plugin);
    }
    return std::unique_ptr<Gui>(make());
}

} // namespace

bool LoadedGui::hasDisplay() const { return displayCanBeReached(); }

void LoadedGui::run(bool visible, const Language& language, const std::string& translationContext,
                    const Work& work) {
    if (!gui_) {
        gui_ = load(programFolder_);
    }
    gui_->run(visible, language, translationContext, work);
}

} // namespace vexil::host
