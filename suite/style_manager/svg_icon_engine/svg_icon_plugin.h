#pragma once

#include <QtGui/QIconEnginePlugin>

/// How Qt finds the engine: by the suffix of a file.
class SvgIconPlugin : public QIconEnginePlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QIconEngineFactoryInterface_iid FILE "svg_icon.json")
public:
    QIconEngine* create(const QString& fileName) override;
};
