#pragma once

#include "platform/desktop.h"
#include "utils/accessibility/dialog_environment.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vexil::test {

/// A desktop whose user, colours and monitors a test decides on.
class FakeDesktop : public platform::Desktop {
public:
    std::optional<std::uint32_t> highContrast;
    std::array<std::uint32_t, 31> colors{}; ///< by Windows' index, red in the low byte
    std::optional<bool> readerFlag;
    bool narrator = false;
    void* primary = nullptr;
    std::vector<platform::Monitor> monitorList;

    std::vector<std::string> calls; ///< what was done to the desktop, in order
    QWidget* broughtForward = nullptr;
    std::vector<bool> polished; ///< whether it was, of each window that was brought forward

    std::optional<std::uint32_t> highContrastFlags() override { return highContrast; }
    std::uint32_t systemColor(int index) override {
        readColors.push_back(index);
        return colors.at(static_cast<std::size_t>(index));
    }
    std::optional<bool> screenReaderFlag() override { return readerFlag; }
    bool narratorRunning() override { return narrator; }
    void* primaryMonitor() override { return primary; }
    std::vector<platform::Monitor> monitors() override { return monitorList; }
    void watchTheme(QObject& owner, std::function<void()> changed) override {
        watchers_.emplace_back(&owner, std::move(changed));
    }
    void sendKey(std::uint16_t key, platform::KeyMotion motion) override {
        calls.push_back((motion == platform::KeyMotion::press ? "press " : "release ") + std::to_string(key));
    }
    void bringForward(QWidget& window) override {
        calls.emplace_back("forward");
        broughtForward = &window;
        polished.push_back(window.testAttribute(Qt::WA_WState_Polished));
    }

    std::vector<int> readColors;

    void changeTheme() {
        for (const auto& [owner, changed] : watchers_) {
            if (owner) {
                changed();
            }
        }
    }

    /// Light text on black, and dark text on white, as Windows' own themes have them.
    void useLightOnDark() { useTheme(0x000000, 0xFFFFFF, 0x3FF23F, 0xFFEB1A, 0x000000); }
    void useDarkOnLight() { useTheme(0xFFFFFF, 0x000000, 0x000060, 0x6E0037, 0xFFFFFF); }

private:
    void useTheme(std::uint32_t ground, std::uint32_t text, std::uint32_t gray, std::uint32_t highlight,
                  std::uint32_t highlightText) {
        highContrast = 1;
        for (const int index : {0, 1, 3, 4, 5, 15, 24}) {
            colors.at(static_cast<std::size_t>(index)) = ground;
        }
        for (const int index : {6, 7, 8, 18, 19, 23}) {
            colors.at(static_cast<std::size_t>(index)) = text;
        }
        colors[17] = gray;
        colors[13] = highlight;
        colors[14] = highlightText;
    }

    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> watchers_;
};

/// The world of the dialogs with a desktop of the test's own. What the test leaves alone is the real one.
class FakeDialogEnvironment : public utils::accessibility::DialogEnvironment {
public:
    FakeDesktop fakeDesktop;
    std::optional<std::string> sheet;
    std::optional<std::string> folder;
    Module* fakeLoader = nullptr;

    platform::Desktop& desktop() override { return fakeDesktop; }
    Module* loader() override { return fakeLoader == nullptr ? DialogEnvironment::loader() : fakeLoader; }
    std::string stylesheet() override { return sheet ? *sheet : DialogEnvironment::stylesheet(); }
    std::string temporaryFolder() override { return folder ? *folder : DialogEnvironment::temporaryFolder(); }

private:
    utils::accessibility::DialogEnvironmentOverride override_{*this};
};

} // namespace vexil::test
