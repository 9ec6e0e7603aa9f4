#pragma once

#include "utils/event_filters/high_contrast_event_filter.h"

#include <QtGui/QColor>
#include <QtWidgets/QDialog>

#include <memory>
#include <vector>

namespace vexil::utils::accessibility {

/// Gives a dialog the suite's look. While the desktop is in high contrast, colours and pictures are the
/// user's own; a change of theme is followed while the dialog is open.
class AccessibleDialogBase : public QDialog {
    Q_OBJECT
public:
    explicit AccessibleDialogBase(QWidget* parent = nullptr);
    ~AccessibleDialogBase() override;

    /// The stylesheet as the suite gave it: where each rewrite starts, and what stands without high contrast.
    [[nodiscard]] const QString& baseStyleSheet() const { return baseStyleSheet_; }

public slots:
    /// Brings the look up to date a tenth of a second later, when the new colours can be read.
    void onThemeChanged();

private:
    void followTheme();
    void applyHighContrast();

    std::unique_ptr<event_filters::HighContrastEventFilter> filter_;
    std::vector<QColor> systemColors_;
    QString baseStyleSheet_;
};

} // namespace vexil::utils::accessibility
