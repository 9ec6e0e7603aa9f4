#pragma once

#include "host/core/gui.h"

namespace vexil::host {

/// A Qt application that lives for one `run`.
class QtGui final : public Gui {
public:
    [[nodiscard]] bool hasDisplay() const override;
    void run(bool visible, const Language& language, const std::string& translationContext,
             const Work& work) override;
};

} // namespace vexil::host
