#include "utils/interaction/gui_custom_input_interaction.h"
#include "utils/interaction/input_request_closer.h"

#include "support/fake_shcore.h"
#include "utils/interaction/gui_fixture.h"

#include <algorithm>
#include <stdexcept>

namespace vexil::utils {
namespace {

/// A widget that does what the test says.
class Scripted final : public AbstractWidgetWrapper {
public:
    using Script = std::function<std::uint32_t(QWidget*, InputRequestCloser*, std::int32_t)>;
    explicit Scripted(Script script) : script_(std::move(script)) {}
    std::uint32_t showWidget(QWidget* parent, InputRequestCloser* closer, std::int32_t dpi) override {
        return script_(parent, closer, dpi);
    }

private:
    Script script_;
};

class CustomInteraction : public tests::GuiFixture {
protected:
    std::uint32_t present(const Scripted::Script& script) {
        Scripted widget(script);
        GuiCustomInputInteraction interaction(widget, false, true);
        runWorker([&] { interaction.ask(); });
        return interaction.result();
    }
};

TEST_F(CustomInteraction, GivesTheWidgetsAnswerFromTheGuiThread) {
    const auto gui = std::this_thread::get_id();
    EXPECT_EQ(present([gui](QWidget*, InputRequestCloser*, std::int32_t) {
                  EXPECT_EQ(std::this_thread::get_id(), gui);
                  return std::uint32_t{4};
              }),
              4U);
}

TEST_F(CustomInteraction, ShowsTheHostsWindowForTheTimeOfTheQuestion) {
    QWidget window;
    window.setAccessibleName("Default - Window");
    EXPECT_EQ(present([&window](QWidget* parent, InputRequestCloser* closer, std::int32_t dpi) {
                  EXPECT_EQ(parent, &window);
                  EXPECT_TRUE(window.isVisible());
                  EXPECT_NE(closer, nullptr);
                  EXPECT_EQ(dpi, 96);
                  return std::uint32_t{1};
              }),
              1U);
    EXPECT_FALSE(window.isVisible());
}

TEST_F(CustomInteraction, TellsTheWidgetTheStepOfTheMonitorsResolution) {
    test::FakeShcore library;
    test::FakeShcoreLoader loader(library);
    environment_.fakeLoader = &loader;
    library.dpi = 150;
    QWidget window;
    window.setAccessibleName("Default - Window");
    EXPECT_EQ(present([](QWidget*, InputRequestCloser*, std::int32_t dpi) {
                  return static_cast<std::uint32_t>(dpi);
              }),
              144U);
}

TEST_F(CustomInteraction, RaisesAndActivatesAHostsWindowThatIsOpenAlready) {
    class Noting final : public QObject {
    public:
        bool eventFilter(QObject*, QEvent* event) override {
            raised = raised || event->type() == QEvent::ZOrderChange;
            return false;
        }
        bool raised = false;
    };
    Noting noting;
    QWidget window;
    window.setAccessibleName("Default - Window");
    window.show();
    QWidget other;
    other.show();
    other.activateWindow();
    QApplication::processEvents();
    ASSERT_EQ(QApplication::activeWindow(), &other);
    window.installEventFilter(&noting);
    present([&](QWidget*, InputRequestCloser*, std::int32_t) {
        QApplication::processEvents();
        EXPECT_TRUE(noting.raised);
        EXPECT_EQ(QApplication::activeWindow(), &window);
        return std::uint32_t{0};
    });
}

TEST_F(CustomInteraction, TakesTheExactNameOnly) {
    QWidget other;
    other.setAccessibleName("Default - Window 2");
    QWidget another;
    another.setAccessibleName("default - window");
    present([&](QWidget* parent, InputRequestCloser*, std::int32_t) {
        EXPECT_EQ(parent, nullptr);
        EXPECT_FALSE(other.isVisible());
        EXPECT_FALSE(another.isVisible());
        return std::uint32_t{0};
    });
}

TEST_F(CustomInteraction, ShowsEveryWindowOfThatNameAndHidesTheLast) {
    std::array<QWidget, 3> windows;
    for (auto& window : windows) {
        window.setAccessibleName("Default - Window");
    }
    const auto widgets = QApplication::allWidgets();
    const auto last = std::find_if(widgets.rbegin(), widgets.rend(), [](const QWidget* widget) {
        return widget->accessibleName() == "Default - Window";
    });
    ASSERT_NE(last, widgets.rend());
    QWidget* host = nullptr;
    present([&](QWidget* parent, InputRequestCloser*, std::int32_t) {
        host = parent;
        for (const auto& window : windows) {
            EXPECT_TRUE(window.isVisible());
        }
        return std::uint32_t{0};
    });
    EXPECT_EQ(host, *last);
    for (const auto& window : windows) {
        EXPECT_EQ(window.isVisible(), &window != host);
    }
}

TEST_F(CustomInteraction, BringsTheHostsWindowForwardBeforeTheWidget) {
    QWidget window;
    window.setAccessibleName("Default - Window");
    present([this](QWidget*, InputRequestCloser*, std::int32_t) {
        environment_.fakeDesktop.calls.emplace_back("widget");
        return std::uint32_t{0};
    });
    EXPECT_EQ(environment_.fakeDesktop.broughtForward, &window);
    EXPECT_EQ(environment_.fakeDesktop.calls,
              (std::vector<std::string>{"press 37", "release 37", "forward", "widget"}));
}

TEST_F(CustomInteraction, LivesWithoutAHostsWindow) {
    EXPECT_EQ(present([](QWidget* parent, InputRequestCloser*, std::int32_t dpi) {
                  EXPECT_EQ(parent, nullptr);
                  EXPECT_EQ(dpi, 96);
                  return std::uint32_t{2};
              }),
              2U);
}

TEST_F(CustomInteraction, LivesWithAHostsWindowThatGoesMeanwhile) {
    auto window = std::make_unique<QWidget>();
    window->setAccessibleName("Default - Window");
    EXPECT_EQ(present([&window](QWidget*, InputRequestCloser*, std::int32_t) {
                  window.reset();
                  return std::uint32_t{3};
              }),
              3U);
}

TEST_F(CustomInteraction, DestroysItsCloserAtTheEnd) {
    QPointer<QObject> closer;
    present([&closer](QWidget*, InputRequestCloser* given, std::int32_t) {
        closer = given;
        return std::uint32_t{0};
    });
    EXPECT_TRUE(closer.isNull());
}

TEST_F(CustomInteraction, ThrowsAtTheWorkerWhatItsWidgetThrowsAndHidesTheHostsWindow) {
    QWidget window;
    window.setAccessibleName("Default - Window");
    Scripted widget([&window](QWidget*, InputRequestCloser*, std::int32_t) -> std::uint32_t {
        EXPECT_TRUE(window.isVisible());
        throw std::runtime_error("no window");
    });
    GuiCustomInputInteraction interaction(widget, false, true);
    std::string caught;
    runWorker([&] {
        try {
            interaction.ask();
        } catch (const std::runtime_error& error) {
            caught = error.what();
        }
    });
    EXPECT_EQ(caught, "no window");
    EXPECT_FALSE(window.isVisible());
}

TEST_F(CustomInteraction, IsNotAskedWhenItIsSuppressed) {
    Scripted widget([](QWidget*, InputRequestCloser*, std::int32_t) -> std::uint32_t {
        ADD_FAILURE() << "shown";
        return 1;
    });
    GuiCustomInputInteraction interaction(widget, true, true);
    runWorker([&] { interaction.ask(); });
    EXPECT_EQ(interaction.result(), 0U);
}

TEST_F(CustomInteraction, AnswersTenWorkersOneAfterTheOther) {
    int inside = 0;
    std::uint32_t shown = 0;
    Scripted widget([&](QWidget*, InputRequestCloser*, std::int32_t) {
        EXPECT_EQ(++inside, 1) << "a widget without a loop of its own is alone";
        --inside;
        return ++shown;
    });
    std::vector<std::uint32_t> answers(10);
    std::vector<std::function<void()>> works;
    for (auto& answer : answers) {
        works.emplace_back([&widget, &answer] {
            GuiCustomInputInteraction interaction(widget, false, true);
            interaction.ask();
            answer = interaction.result();
        });
    }
    runWorkers(works);
    std::sort(answers.begin(), answers.end());
    EXPECT_EQ(answers, (std::vector<std::uint32_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST_F(CustomInteraction, WakesAWorkerWhoseApplicationGoesBeforeItIsShown) {
    Scripted widget([](QWidget*, InputRequestCloser*, std::int32_t) { return std::uint32_t{1}; });
    GuiCustomInputInteraction interaction(widget, false, true);
    std::thread worker([&] { interaction.ask(); });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    application_.reset();
    worker.join();
    EXPECT_EQ(interaction.result(), 0U);
}

} // namespace
} // namespace vexil::utils
