#pragma once

#include <QLabel>
#include <QWidget>

namespace vexil::host {

class Language;

/// The window that stands behind those of a test. A test's bridge finds it by its accessible name, shows it
/// while the test uses the screen, and hides it afterwards.
class HostWindow final : public QWidget {
public:
    explicit HostWindow(const Language& language);

    void showTest(const QString& title);

private:
    QLabel* test_;
};

} // namespace vexil::host
