#include "utils/interaction/legacy_context.h"
#include "utils/interaction/widget_wrapper_with_callable.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace vexil::utils {
namespace {

TEST(WidgetWrapper, HandsItsCallableWhatTheBridgeGives) {
    QWidget* const parent = reinterpret_cast<QWidget*>(0x10);
    InputRequestCloser* const closer = reinterpret_cast<InputRequestCloser*>(0x20);
    WidgetWrapperWithCallable wrapper(std::make_unique<legacy::Context>(nullptr),
                                      [&](QWidget* given, InputRequestCloser* givenCloser, std::int32_t dpi) {
                                          EXPECT_EQ(given, parent);
                                          EXPECT_EQ(givenCloser, closer);
                                          EXPECT_EQ(dpi, 144);
                                          return std::uint32_t{4};
                                      });
    EXPECT_EQ(wrapper.showWidget(parent, closer, 144), 4U);
}

TEST(WidgetWrapper, Answers5WhereItsCallableThrows) {
    WidgetWrapperWithCallable wrapper(nullptr,
                                      [](QWidget*, InputRequestCloser*, std::int32_t) -> std::uint32_t {
                                          throw std::runtime_error("no window");
                                      });
    EXPECT_EQ(wrapper.showWidget(nullptr, nullptr, 96), 5U);
    WidgetWrapperWithCallable odd(
        nullptr, [](QWidget*, InputRequestCloser*, std::int32_t) -> std::uint32_t { throw 1; });
    EXPECT_EQ(odd.showWidget(nullptr, nullptr, 96), 5U) << "what is thrown need not be an exception";
}

TEST(WidgetWrapper, KeepsContextAndCallableForAsLongAsItLives) {
    const auto held = std::make_shared<int>(0);
    {
        WidgetWrapperWithCallable wrapper(nullptr, [held](QWidget*, InputRequestCloser*, std::int32_t) {
            return static_cast<std::uint32_t>(*held);
        });
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
}

} // namespace
} // namespace vexil::utils
