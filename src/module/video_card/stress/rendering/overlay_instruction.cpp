#include "module/video_card/stress/rendering/overlay_instruction.h"

#include <QCoreApplication>
#include <QFont>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <QString>

namespace vexil::module::video_card {

namespace {

constexpr int fallbackDpi = 96;

} // namespace

std::wstring instructionText() {
    return QCoreApplication::translate("VIDEO_CARD", "ESC_INSTRUCTION").toStdWString();
}

float instructionWidth(const std::wstring& text, int pointSize) {
    const QFontMetrics metrics(QFont(QStringLiteral("Lato"), pointSize, QFont::DemiBold));
    static_assert(QFont::DemiBold == 600 && Qt::TextSingleLine == 256);
    return static_cast<float>(metrics.size(Qt::TextSingleLine, QString::fromStdWString(text)).width());
}

int firstMonitorDpi() {
    const auto screens = QGuiApplication::screens();
    return screens.isEmpty() ? fallbackDpi : static_cast<int>(screens.first()->logicalDotsPerInchX());
}

} // namespace vexil::module::video_card
