#pragma once

#include <QtGlobal>

namespace vexil::host {

/// Keeps what Qt says to developers off the user's terminal, for as long as the object lives. Debug lines are
/// dropped, and so is what Qt remarks on the environment while it starts. One at a time.
class QtMessages {
public:
    QtMessages();
    QtMessages(const QtMessages&) = delete;
    QtMessages& operator=(const QtMessages&) = delete;
    ~QtMessages();

    /// From now on warnings are written to the error stream.
    void showWarnings();

private:
    QtMessageHandler before_;
};

} // namespace vexil::host
