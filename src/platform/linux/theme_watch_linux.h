#pragma once

#include <QtCore/QObject>

#include <functional>

namespace vexil::platform {

/// Hears of a new palette from Qt's platform theme, and of new settings from the desktop portal.
class ThemeWatch : public QObject {
    Q_OBJECT
public:
    ThemeWatch(QObject& owner, std::function<void()> changed);

    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void tell();

private:
    std::function<void()> changed_;
};

} // namespace vexil::platform
