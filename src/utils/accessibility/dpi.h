#pragma once

#include <QtCore/QSize>
#include <QtWidgets/QWidget>

#include <cstdint>
#include <vector>

class QScreen;

namespace vexil::utils::accessibility {

struct DpiValues {
    std::int32_t logicalDpi;
    std::int32_t physicalDpi;

    friend bool operator==(const DpiValues&, const DpiValues&) = default;
};

/// The steps in which dialogs scale; the logical value ends at 192.
[[nodiscard]] DpiValues reduceDpi(std::int32_t dpi);

/// The screen of 800 by 600 for which the dialogs are laid out, enlarged for the resolution and kept within
/// the screen.
[[nodiscard]] QSize fittedSize(QSize screen, std::int32_t logicalDpi);

/// The part of the fitted size that `size` is of 800 by 600, truncated.
[[nodiscard]] QSize scaledSize(QSize fitted, QSize size);

/// The monitor's resolution, and the scale of the dialogs that follows from it. There is one of it in the
/// process, a hidden child of a top-level widget, which may take it along.
class Dpi : public QWidget {
    Q_OBJECT
public:
    /// Made on the first request. Null while the application has no top-level widget.
    [[nodiscard]] static Dpi* instance();
    ~Dpi() override;

    [[nodiscard]] std::int32_t logicalDpi() const { return values_.logicalDpi; }
    [[nodiscard]] std::int32_t physicalDpi() const { return values_.physicalDpi; }

    [[nodiscard]] QSize fitToScreen() const;               ///< on the first screen
    [[nodiscard]] QSize scaledSize(QSize reference) const; ///< of a size on the screen of 800 by 600

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    explicit Dpi(QWidget* parent);

    DpiValues values_;
};

/// The resolution of the primary monitor as "shcore.dll" tells it, or of the first screen as Qt does. Not
/// reduced.
[[nodiscard]] std::int32_t primaryMonitorDpi();

struct ScreenDpi {
    QScreen* screen;
    std::int32_t dpi;
};

/// The resolution of each monitor that is one of Qt's screens, in the order of the screens. Not reduced.
[[nodiscard]] std::vector<ScreenDpi> monitorDpis();

/// Of the first monitor; 96 without a screen.
[[nodiscard]] std::int32_t firstMonitorDpi();

} // namespace vexil::utils::accessibility
