#include "fonts.h"

#include <QtCore/QDirIterator>
#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>

void registerFonts() {
    static bool registered = false;
    if (registered || qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr) {
        return;
    }
    registered = true;
    for (QDirIterator files(":/norvane_fonts"); files.hasNext();) {
        QFontDatabase::addApplicationFont(files.next());
    }
}
