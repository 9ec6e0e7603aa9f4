#pragma once

#include "utils/interaction/abstract_widget_wrapper.h"
#include "utils/interaction/test_context.h"
#include "utils/interaction/widget_task.h"

#include <memory>
#include <utility>

namespace vexil::utils {

/// A widget that is whatever a callable shows.
class WidgetWrapperWithCallable : public AbstractWidgetWrapper {
public:
    WidgetWrapperWithCallable(std::unique_ptr<TestContext> context, std::unique_ptr<WidgetTaskInterface> task)
        : context_(std::move(context)), task_(std::move(task)) {}

    /// `callable` takes parent, closer and resolution as `WidgetTaskInterface::show` does.
    template <typename Callable>
    WidgetWrapperWithCallable(std::unique_ptr<TestContext> context, Callable callable)
        : WidgetWrapperWithCallable(std::move(context),
                                    std::unique_ptr<WidgetTaskInterface>(
                                        std::make_unique<WidgetTask<Callable>>(std::move(callable)))) {}

    std::uint32_t showWidget(QWidget* parent, InputRequestCloser* closer, std::int32_t dpi) override {
        return task_->show(parent, closer, dpi);
    }

private:
    std::unique_ptr<TestContext> context_;
    std::unique_ptr<WidgetTaskInterface> task_;
};

} // namespace vexil::utils
