#include "utils/accessibility/dialog_environment.h"

#include "core/sal.h"
#include "core/style_manager.h"

#include <utility>

namespace vexil::utils::accessibility {

namespace {

DialogEnvironment& systemEnvironment() {
    static DialogEnvironment environment;
    return environment;
}

DialogEnvironment* current = nullptr;

} // namespace

platform::Desktop& DialogEnvironment::desktop() { return platform::systemDesktop(); }
Module* DialogEnvironment::loader() { return get_module(); }
std::string DialogEnvironment::stylesheet() { return StyleManager::instance().Stylesheet(); }
std::string DialogEnvironment::temporaryFolder() {
    const char* folder = get_temporary_path();
    return folder == nullptr ? std::string() : folder;
}

DialogEnvironment& dialogEnvironment() { return current == nullptr ? systemEnvironment() : *current; }

DialogEnvironmentOverride::DialogEnvironmentOverride(DialogEnvironment& environment)
    : previous_(std::exchange(current, &environment)) {}

DialogEnvironmentOverride::~DialogEnvironmentOverride() { current = previous_; }

} // namespace vexil::utils::accessibility
