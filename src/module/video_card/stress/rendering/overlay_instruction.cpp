#include "module/video_card/stress/rendering/overlay_instruction.h"

#include "core/message_keys.h"

#include <QCoreApplication>
#include <QFont>
#include <QFontMetrics>
#include <QString>

namespace vexil::module::video_card {

std::wstring instructionText() {
    return QCoreApplication::translate(keys::moduleName.c_str(), keys::escInstruction.c_str()).toStdWString();
}

float instructionWidth(const std::wstring& text, int pointSize) {
    const QFontMetrics metrics(QFont(QStringLiteral("Lato"), pointSize, QFont::DemiBold));
    static_assert(QFont::DemiBold == 600 && Qt::TextSingleLine == 256);
    return static_cast<float>(metrics.size(Qt::TextSingleLine, QString::fromStdWString(text)).width());
}

} // namespace vexil::module::video_card
