#include "svg_icon_plugin.h"

#include "svg_icon_engine.h"

QIconEngine* SvgIconPlugin::create(const QString& fileName) {
    auto* engine = new SvgIconEngine; // Qt takes it
    if (!fileName.isEmpty()) {
        engine->addFile(fileName, QSize(), QIcon::Normal, QIcon::Off);
    }
    return engine;
}
