#pragma once

#include "utils/interaction/abstract_widget_wrapper.h"

#include <QObject>

#include <functional>

namespace vexil::module::video_card {

/// Carries a function to the GUI thread in the clothes of a widget.
class WireframeStressTestWrapper final : public QObject, public AbstractWidgetWrapper {
    Q_OBJECT

public:
    /// `work` outlives the wrapper.
    explicit WireframeStressTestWrapper(std::function<void()>& work) : work_(&work) {}

    /// Calls the function; shows nothing.
    std::uint32_t showWidget(QWidget* parent, utils::InputRequestCloser* closer, std::int32_t dpi) override;

private:
    std::function<void()>* work_;
};

} // namespace vexil::module::video_card
