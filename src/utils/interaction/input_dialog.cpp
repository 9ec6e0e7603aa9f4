#include "utils/interaction/input_dialog.h"

#include "utils/interaction/stop_watch.h"

#include <QtCore/QDebug>
#include <QtCore/QEventLoop>
#include <QtCore/QPointer>

namespace vexil::utils {

InputDialog::InputDialog(QWidget* parent, QObject* filter) : AccessibleDialogBase(parent) {
    installEventFilter(filter);
    setAttribute(Qt::WA_DeleteOnClose, false);
    setWindowFlags(Qt::WindowStaysOnTopHint);
    setWindowModality(Qt::WindowModal);
    setModal(true);
}

int InputDialog::exec() {
    QEventLoop loop;
    connect(this, &QDialog::finished, &loop, &QEventLoop::quit);
    // A dialog that is done while it is shown has quit a loop that does not run yet.
    bool over = false;
    connect(this, &QDialog::finished, &loop, [&over] { over = true; });
    // Its parent may take the dialog along, and then nothing else would end the loop.
    connect(this, &QObject::destroyed, &loop, &QEventLoop::quit);
    const QPointer<InputDialog> guard = this;
    qDebug() << "Before show: " << result();
    show();
    qDebug() << "Before loop: " << result();
    const StopWatch stop(context_, [guard] {
        if (guard) {
            emit guard->finished(0);
        }
    });
    if (!over) {
        loop.exec();
    }
    if (!guard) {
        return 0;
    }
    qDebug() << "After the event loop: " << result();
    return result();
}

void InputDialog::accept() { done(result()); }

void InputDialog::reject() { done(result()); }

} // namespace vexil::utils
