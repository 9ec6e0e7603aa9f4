#pragma once

#include "support/fake_desktop.h"
#include "support/time_bound.h"
#include "utils/interaction/test_context.h"

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace vexil::utils::tests {

/// A context whose test can be stopped from any thread.
class StoppableContext final : public TestContext {
public:
    [[nodiscard]] std::uint32_t unused1() const override { return 0; }
    [[nodiscard]] std::uint32_t unused2() const override { return 0; }
    [[nodiscard]] std::uint32_t unused3() const override { return 0; }
    [[nodiscard]] std::uint32_t unused4() const override { return 0; }
    [[nodiscard]] bool isCancelled() const override { return stopped; }
    [[nodiscard]] std::uint32_t unused6() const override { return 0; }
    [[nodiscard]] std::map<std::string, std::string> values() const override { return {}; }
    [[nodiscard]] std::vector<std::string> entries() const override { return {}; }

    std::atomic<bool> stopped = false;
};

/// The test's own thread is the GUI thread, without any display, and each test has a bound in time.
class GuiFixture : public ::testing::Test {
protected:
    GuiFixture() { application_ = std::make_unique<QApplication>(count_, values_.data()); }

    /// Runs the work on a thread of its own and the event loop on this one, until the work has ended.
    void runWorker(const std::function<void()>& work) { runWorkers({work}); }
    void runWorkers(const std::vector<std::function<void()>>& works) {
        std::atomic<std::size_t> left = works.size();
        std::vector<std::thread> workers;
        for (const auto& work : works) {
            workers.emplace_back([&left, work] {
                work();
                if (--left == 0) {
                    // A quit would close every window first.
                    QMetaObject::invokeMethod(
                        QCoreApplication::instance(), [] { QCoreApplication::exit(); }, Qt::QueuedConnection);
                }
            });
        }
        QApplication::exec();
        for (auto& worker : workers) {
            worker.join();
        }
    }

    /// Calls `act` with each dialog that is open, some twenty times a second.
    void withOpenDialog(std::function<void(QDialog&)> act) {
        QObject::connect(&watch_, &QTimer::timeout, &watch_, [act = std::move(act)] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr && dialog->isVisible()) {
                act(*dialog);
            }
        });
        watch_.start(std::chrono::milliseconds(50));
    }

    std::array<char, 5> program_{"test"};
    std::array<char, 10> option_{"-platform"};
    std::array<char, 10> plugin_{"offscreen"};
    std::array<char*, 4> values_{program_.data(), option_.data(), plugin_.data(), nullptr};
    int count_ = 3;
    vexil::tests::TimeBound bound_{std::chrono::seconds(20)};
    std::unique_ptr<QApplication> application_;
    test::FakeDialogEnvironment environment_;
    QTimer watch_;
};

} // namespace vexil::utils::tests
