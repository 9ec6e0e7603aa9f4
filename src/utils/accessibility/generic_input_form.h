#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

#include <functional>

class QDialog;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QScrollArea;
class QWidget;

namespace vexil::utils::accessibility {

/// The widgets of the question box. They belong to the dialog; their object names are what the stylesheet
/// knows.
struct GenericInputForm {
    QWidget* border = nullptr;
    QWidget* header = nullptr;
    QLabel* headerLabel = nullptr;
    QPushButton* headerClose = nullptr;
    QWidget* instruction = nullptr;
    QLabel* icon = nullptr;
    QScrollArea* instructionScroll = nullptr; ///< for a message that is longer than the screen
    QLabel* instructionLabel = nullptr;
    QWidget* fields = nullptr; ///< empty: the box asks with its buttons alone
    QWidget* footer = nullptr;
    QHBoxLayout* footerLayout = nullptr;

    /// Makes the widgets, without texts.
    void setUp(QDialog& dialog);
    void setTexts(const QString& title, const QString& message);
    /// At the right end of the footer, behind those that are there.
    QPushButton* addButton(const char* objectName, const QString& text);

    /// From a size on the reference screen to one on this screen.
    using Scale = std::function<QSize(QSize)>;
    /// Gives the dialog and its parts their sizes, `room` at most.
    void layOut(QDialog& dialog, const Scale& scale, QSize room);

private:
    QString title_;
    QString message_;
};

} // namespace vexil::utils::accessibility
