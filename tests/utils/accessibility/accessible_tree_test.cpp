#include "support/event_loop.h"
#include "support/fake_desktop.h"
#include "support/key_translator.h"
#include "utils/accessibility/generic_input_dialog.h"

#include <QtGui/QAccessible>
#include <QtWidgets/QPushButton>

#include <gtest/gtest.h>

#include <algorithm>

// What a screen reader is told of the question box.
namespace vexil::utils::accessibility {
namespace {

struct Node {
    QAccessible::Role role;
    std::string name;
    bool focusable;

    friend bool operator==(const Node&, const Node&) = default;
};

void collect(QAccessibleInterface* parent, std::vector<Node>& nodes) {
    for (int i = 0; i < parent->childCount(); ++i) {
        auto* child = parent->child(i);
        const auto state = child->state();
        const auto name = child->text(QAccessible::Name).toStdString();
        if (!name.empty() && !state.invisible) {
            nodes.push_back({child->role(), name, state.focusable != 0});
        }
        collect(child, nodes);
    }
}

class AccessibleTree : public testing::Test {
protected:
    AccessibleTree() {
        QAccessible::setActive(true);
        request.title = "TITLE";
        request.text = "TEXT";
        request.type = 1;
    }
    ~AccessibleTree() override { QAccessible::setActive(false); }

    static void show(QDialog& dialog) {
        dialog.show();
        dialog.activateWindow();
        ASSERT_TRUE(test::runEventsUntil([&] { return dialog.isActiveWindow(); }));
    }

    test::FakeDialogEnvironment environment;
    test::KeyTranslator texts{"C",
                              {{"TITLE", "The title"},
                               {"TEXT", "The message"},
                               {"OK", "Okay"},
                               {"CANCEL", "Leave it"},
                               {"CLOSE_POP_UP", "Shut"}}};
    InputRequest request;
};

TEST_F(AccessibleTree, HasARoleAndANameForEverythingThatIsRead) {
    GenericInputDialog dialog(request, "C");
    show(dialog);
    auto* root = QAccessible::queryAccessibleInterface(&dialog);
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->role(), QAccessible::Client);
    EXPECT_EQ(root->text(QAccessible::Name), "The title");
    EXPECT_EQ(root->text(QAccessible::Description), "The message");

    std::vector<Node> nodes;
    collect(root, nodes);
    for (const auto& expected :
         {Node{QAccessible::StaticText, "The title", false},
          Node{QAccessible::StaticText, "The message", false}, Node{QAccessible::Button, "Okay", true},
          Node{QAccessible::Button, "Leave it", true}, Node{QAccessible::Button, "Shut", true}}) {
        EXPECT_EQ(std::ranges::count(nodes, expected), 1) << expected.name;
    }
    EXPECT_EQ(nodes.size(), 5U) << "nothing else has anything to say";
}

TEST_F(AccessibleTree, TellsWhereTheFocusIs) {
    GenericInputDialog dialog(request, "C");
    show(dialog);
    auto* root = QAccessible::queryAccessibleInterface(&dialog);
    ASSERT_NE(root->focusChild(), nullptr);
    EXPECT_EQ(root->focusChild()->text(QAccessible::Name), "Okay");
    dialog.findChild<QWidget*>("generic_input_header_close")->setFocus();
    EXPECT_EQ(root->focusChild()->text(QAccessible::Name), "Shut");
}

TEST_F(AccessibleTree, HasTextsThatTakeTheFocusWhereAScreenReaderRuns) {
    environment.fakeDesktop.readerFlag = true;
    GenericInputDialog dialog(request, "C");
    show(dialog);
    auto* root = QAccessible::queryAccessibleInterface(&dialog);
    ASSERT_NE(root->focusChild(), nullptr);
    EXPECT_EQ(root->focusChild()->text(QAccessible::Name), "The title");
    std::vector<Node> nodes;
    collect(root, nodes);
    EXPECT_EQ(std::ranges::count(nodes, Node{QAccessible::StaticText, "The message", true}), 1);
}

TEST_F(AccessibleTree, PressesAButtonForAssistiveTechnology) {
    GenericInputDialog dialog(request, "C");
    show(dialog);
    auto* button =
        QAccessible::queryAccessibleInterface(dialog.findChild<QPushButton*>("generic_input_button_cancel"));
    ASSERT_NE(button, nullptr);
    button->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    test::runEventsUntil([&] { return !dialog.isVisible(); });
    EXPECT_EQ(request.result, 2U);
}

} // namespace
} // namespace vexil::utils::accessibility
