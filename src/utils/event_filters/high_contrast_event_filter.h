#pragma once

#include <QtCore/QAbstractNativeEventFilter>
#include <QtCore/QObject>
#include <QtGui/QColor>

#include <vector>

namespace vexil::utils::event_filters {

/// Listens for changes of the desktop's theme, and reads its colours.
class HighContrastEventFilter : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT
public:
    HighContrastEventFilter();

    /// True for the message of a theme change, which is thereby kept from everything that would see it later:
    /// of two filters the one that was installed last hears of it.
    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

    /// Thirty colours, see `systemColorIndices`.
    void readSystemColors(std::vector<QColor>& colors) const;

signals:
    void themeChanged();
};

} // namespace vexil::utils::event_filters
