#pragma once

#include "host/core/gui.h"

#include <string>
#include <vector>

namespace vexil::host {

/// Runs the work at once, and notes what it was asked for.
class NotingGui final : public Gui {
public:
    [[nodiscard]] bool hasDisplay() const override { return display; }
    void run(bool visible, const Language&, const std::string& translationContext,
             const Work& work) override {
        class Session final : public GuiSession {
        public:
            explicit Session(std::vector<std::string>& titles) : titles_(titles) {}
            void showTest(const std::string& title) override { titles_.push_back(title); }

        private:
            std::vector<std::string>& titles_;
        };
        uses.push_back(std::string(visible ? "visible " : "hidden ") + translationContext);
        Session session(titles);
        work(session);
    }

    bool display = true;
    std::vector<std::string> uses;
    std::vector<std::string> titles;
};

} // namespace vexil::host
