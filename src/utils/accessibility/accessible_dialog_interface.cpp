#include "utils/accessibility/accessible_dialog_interface.h"

#include "utils/accessibility/accessible_dialog_base.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QAccessibleWidget>

namespace vexil::utils::accessibility {

namespace {

/// Qt asks once for each class that an object derives from, the most derived first, and takes the first
/// interface.
QAccessibleInterface* makeInterface(const QString& className, QObject* object) {
    if (className != AccessibleDialogBase::staticMetaObject.className()) {
        return nullptr;
    }
    return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Client);
}

/// Taken back when the library that holds this code leaves the process.
class InstalledFactory {
public:
    InstalledFactory() { QAccessible::installFactory(makeInterface); }
    InstalledFactory(const InstalledFactory&) = delete;
    InstalledFactory& operator=(const InstalledFactory&) = delete;
    ~InstalledFactory() { QAccessible::removeFactory(makeInterface); }
};

} // namespace

void provideAccessibleInterfaces() { static const InstalledFactory factory; }

} // namespace vexil::utils::accessibility
