#include "host/cli/loaded_gui.h"

#include "host/core/exit_code.h"
#include "host/platform/gui_plugins.h"
#include "host/platform/libraries.h"

namespace vexil::host {

namespace {

std::unique_ptr<Gui> load(const std::filesystem::path& programFolder) {
    std::string reason;
    void* library = platform::openForProcess(programFolder / platform::guiFileName(), reason);
    if (library == nullptr) {
        throw InternalError("the window of the test cannot be made: " + reason);
    }
    const auto make = reinterpret_cast<Gui* (*)()>(platform::symbolOf(library, "makeHostGui"));
    if (make == nullptr) {
        throw InternalError(std::string("the window of the test cannot be made: ") + platform::guiFileName() +
                            " is not the program's library");
    }
    return std::unique_ptr<Gui>(make());
}

} // namespace

bool LoadedGui::hasDisplay() const { return displayCanBeReached(); }

void LoadedGui::run(bool visible, const Language& language, const std::string& translationContext,
                    const Work& work) {
    const auto missing = platform::missingGuiPlugin(programFolder_);
    if (!missing.empty()) {
        throw InternalError("the window of the test cannot be made: the plug-in '" + missing +
                            "' is missing");
    }
    if (!gui_) {
        gui_ = load(programFolder_);
    }
    gui_->run(visible, language, translationContext, work);
}

} // namespace vexil::host
