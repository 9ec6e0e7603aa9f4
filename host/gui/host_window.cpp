#include "host/gui/host_window.h"

#include "core/message_keys.h"
#include "host/core/host_keys.h"
#include "host/core/language.h"

#include <QVBoxLayout>

namespace vexil::host {

namespace {

/// What the suite's modules look for.
constexpr const char* accessibleNameOfTheHost = "Default - Window";
constexpr int windowWidth = 360;
constexpr int margin = 24;

QString textOf(const Language& language, const std::string& key) {
    return QString::fromStdString(language.text(key));
}

} // namespace

HostWindow::HostWindow(const Language& language) : test_(new QLabel(this)) {
    setAccessibleName(accessibleNameOfTheHost);
    setWindowTitle(textOf(language, vexil::keys::applicationName));
    auto* hint = new QLabel(textOf(language, keys::testRuns), this);
    hint->setWordWrap(true);
    test_->setWordWrap(true);
    QFont font = test_->font();
    font.setBold(true);
    test_->setFont(font);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->addWidget(test_);
    layout->addWidget(hint);
    layout->addStretch();
    setMinimumWidth(windowWidth);
}

void HostWindow::showTest(const QString& title) { test_->setText(title); }

} // namespace vexil::host
