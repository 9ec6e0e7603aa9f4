#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <chrono>

class QDialog;

namespace vexil::utils {

/// Lets a test's dialog close by itself after a delay. The bridge makes one for each question; it is also the
/// object that a dialog takes as its event filter, and lets every event pass.
class InputRequestCloser : public QObject {
public:
    InputRequestCloser();

    /// Ends the dialog with `code` once the delay is over. A later call takes the place of an earlier one.
    void closeAfter(std::chrono::milliseconds delay, QDialog& dialog, int code = 1);

private:
    void close();

    int code_ = 1;
    QTimer timer_;
    QPointer<QDialog> dialog_;
};

} // namespace vexil::utils
