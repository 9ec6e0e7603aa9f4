#include "utils/accessibility/recolored_pictures.h"

#include "utils/accessibility/dialog_environment.h"
#include "utils/accessibility/svg_recoloring.h"
#include "utils/accessibility/text_pieces.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryFile>

#include <memory>
#include <optional>

namespace vexil::utils::accessibility {

namespace {

std::optional<std::string> readText(std::string_view path) {
    QFile file(QString::fromUtf8(path.data(), static_cast<qsizetype>(path.size())));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        return std::nullopt;
    }
    return file.readAll().toStdString();
}

/// The folder's own name may come with a separator at its end or without.
QString filePattern(const QDir& folder, const std::string& baseName) {
    const std::string name = baseName.empty() ? "temp_svg" : baseName;
    return folder.path() + '/' + QString::fromStdString(name) + "_XXXXXX.svg";
}

/// Nothing if the copy could not be written whole.
std::optional<std::string> writeCopy(const std::string& text, const std::string& baseName, QObject& owner) {
    const auto path = dialogEnvironment().temporaryFolder();
    const QDir folder(QString::fromStdString(path));
    // Without a name it would be the working directory.
    if (path.empty() || !folder.mkpath(".")) {
        return std::nullopt;
    }
    auto file = std::make_unique<QTemporaryFile>(filePattern(folder, baseName));
    const auto length = static_cast<qint64>(text.size());
    if (!file->open() || file->write(text.data(), length) != length || !file->flush()) {
        return std::nullopt;
    }
    const auto name = file->fileName().toStdString();
    file.release()->setParent(&owner);
    return name;
}

std::optional<std::string> recoloredCopy(const std::string& value, const std::string& color, QObject& owner) {
    const auto path = quotedPath(value);
    const auto text = path ? readText(*path) : std::nullopt;
    return text ? writeCopy(recolorSvg(*text, color), svgBaseName(value), owner) : std::nullopt;
}

} // namespace

void recolorPictures(StyleRule& rule, const std::string& color, QObject& owner) {
    for (auto& [name, value] : rule.properties) {
        if (!equalsIgnoringCase(name, "image") && !equalsIgnoringCase(name, "icon")) {
            continue;
        }
        if (const auto copy = recoloredCopy(value, color, owner)) {
            value = "url(\"" + *copy + "\")";
        }
    }
}

} // namespace vexil::utils::accessibility
