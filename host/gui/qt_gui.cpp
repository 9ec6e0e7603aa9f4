#include "host/gui/qt_gui.h"

#include "host/core/exit_code.h"
#include "host/gui/host_window.h"
#include "host/gui/language_translator.h"
#include "host/gui/make_gui.h"
#include "host/gui/qt_messages.h"
#include "host/platform/gui_plugins.h"
#include "host/platform/process.h"

#include <QApplication>

#include <clocale>
#include <exception>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace vexil::host {

namespace {

/// Qt takes the number format from the environment, for the whole process; this program and its module write
/// and read numbers with a point.
class KeptNumberFormat {
public:
    KeptNumberFormat() = default;
    KeptNumberFormat(const KeptNumberFormat&) = delete;
    KeptNumberFormat& operator=(const KeptNumberFormat&) = delete;
    ~KeptNumberFormat() = default;

    void restore() const { std::setlocale(LC_NUMERIC, before_.c_str()); }

private:
    std::string before_ = std::setlocale(LC_NUMERIC, nullptr);
};

/// The application with the arguments that it refers to while it lives.
class Application {
public:
    explicit Application(bool visible) : arguments_(argumentsFor(visible)) {
        for (auto& argument : arguments_) {
            values_.push_back(argument.data());
        }
        values_.push_back(nullptr);
        // Dialogs of the module are scaled by the module, and a test's window is as many pixels as it says.
        if (!platform::environmentVariable("QT_ENABLE_HIGHDPI_SCALING")) {
            platform::setEnvironmentVariable("QT_ENABLE_HIGHDPI_SCALING", "0");
        }
        const KeptNumberFormat format;
        count_ = static_cast<int>(arguments_.size());
        application_.emplace(count_, values_.data());
        format.restore();
        // Windows come and go with the questions of the tests.
        QApplication::setQuitOnLastWindowClosed(false);
    }

    [[nodiscard]] QApplication& get() { return *application_; }

private:
    static std::vector<std::string> argumentsFor(bool visible) {
        const std::string plugins = chosenGuiPlugins() ? "" : platform::guiPlugins(visible);
        return plugins.empty() ? std::vector<std::string>{"vxe-host"}
                               : std::vector<std::string>{"vxe-host", "-platform", plugins};
    }

    std::vector<std::string> arguments_;
    std::vector<char*> values_;
    int count_ = 0;
    std::optional<QApplication> application_;
};

/// Takes what the work says to the GUI thread.
class QtGuiSession final : public GuiSession {
public:
    explicit QtGuiSession(HostWindow& window) : window_(window) {}

    void showTest(const std::string& title) override {
        QMetaObject::invokeMethod(
            &window_, [this, text = QString::fromStdString(title)] { window_.showTest(text); },
            Qt::QueuedConnection);
    }

private:
    HostWindow& window_;
};

} // namespace

bool QtGui::hasDisplay() const { return displayCanBeReached(); }

void QtGui::run(bool visible, const Language& language, const std::string& translationContext,
                const Work& work) {
    QtMessages messages;
    Application application(visible);
    if (visible && QGuiApplication::platformName() == "offscreen") {
        throw HostError(ExitCode::Usage, "Qt cannot open windows on this display");
    }
    if (visible) {
        // Of windows that nobody sees Qt would say again and again that they cannot be raised.
        messages.showWarnings();
    }
    LanguageTranslator translator(language, translationContext);
    QCoreApplication::installTranslator(&translator);
    HostWindow window(language);
    QtGuiSession session(window);

    std::exception_ptr failure;
    bool ended = false;
    std::thread worker([&] {
        try {
            work(session);
        } catch (...) {
            failure = std::current_exception();
        }
        QMetaObject::invokeMethod(
            &application.get(),
            [&ended] {
                ended = true;
                // A quit would ask the windows first, and one may refuse.
                QCoreApplication::exit();
            },
            Qt::QueuedConnection);
    });
    // The desktop may ask the application to quit while a test still needs the GUI thread: questions then
    // meet a loop again.
    while (!ended) {
        QApplication::exec();
    }
    worker.join();
    QCoreApplication::removeTranslator(&translator);
    if (failure) {
        std::rethrow_exception(failure);
    }
}

std::unique_ptr<Gui> makeGui() { return std::make_unique<QtGui>(); }

} // namespace vexil::host
