#include "frmTool1.h"

#include "ScriptedDialogs.h"
#include "Widgets.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <functional>
#include <gtest/gtest.h>

namespace backplot {
namespace {

using Message = test::ScriptedDialogs::ShownMessage;

using test::Child;

struct Tool1Rig {
    explicit Tool1Rig(QWidget* parent = nullptr) : dialog(parent, first, second, cancelled, dialogs) {}
    std::int16_t first = 2, second = 5;
    bool cancelled = false;
    test::ScriptedDialogs dialogs;
    frmTool1 dialog;
};

TEST(frmTool1, OpensCentredWithItsCaptionsAndTheStoredNumbersAndEnterMovesOn)
{
    QWidget main;
    main.setGeometry(100, 80, 900, 700);
    main.show();
    Tool1Rig rig(&main);
    const frmTool1& d = rig.dialog;
    rig.dialog.show();
    QApplication::processEvents();
    EXPECT_LE((d.frameGeometry().center() - main.frameGeometry().center()).manhattanLength(), 2);
    EXPECT_EQ(d.windowTitle(), QStringLiteral("Plot Tool to Tool"));
    EXPECT_EQ(Child<QLabel>(d, "lblTool1")->text(), QStringLiteral("Enter tool number one:"));
    EXPECT_EQ(Child<QLabel>(d, "lblTool2")->text(), QStringLiteral("Enter tool number two:"));
    EXPECT_EQ(Child<QLineEdit>(d, "txtTool1")->text(), QStringLiteral("2"));
    EXPECT_EQ(Child<QLineEdit>(d, "txtTool2")->text(), QStringLiteral("5"));
    EXPECT_EQ(Child<QPushButton>(d, "cmdOk")->text(), QStringLiteral("&OK"));
    EXPECT_EQ(Child<QPushButton>(d, "cmdCancel")->text(), QStringLiteral("Cancel"));
    for (const char* name : {"txtTool1", "txtTool2", "cmdOk", "cmdCancel"})
        EXPECT_FALSE(Child<QWidget>(d, name)->accessibleName().isEmpty()) << name;

    // Enter in the first box moves to the second and selects it, without pressing OK.
    rig.dialog.activateWindow();
    auto* one = Child<QLineEdit>(d, "txtTool1");
    auto* two = Child<QLineEdit>(d, "txtTool2");
    one->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(one->selectedText(), QStringLiteral("2"));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(one, &enter);
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), two);
    EXPECT_EQ(two->selectedText(), QStringLiteral("5"));
    EXPECT_TRUE(rig.dialog.isVisible());
    EXPECT_EQ(rig.first, 2);
}

TEST(frmTool1, OkStoresTheNumbersTypedOrKeepsTheDialogOpenAndEveryOtherWayOutCancels)
{
    using Action = std::function<void(frmTool1&)>;
    const Action ok = [](frmTool1& d) { Child<QPushButton>(d, "cmdOk")->click(); };
    const Action cancel = [](frmTool1& d) { Child<QPushButton>(d, "cmdCancel")->click(); };
    const Action escape = [](frmTool1& d) {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
        QApplication::sendEvent(&d, &key);
    };
    const Action closeBox = [](frmTool1& d) { d.close(); };
    const auto warning = [](const char* text) {
        return Message{text, "Corvane Backplot", MsgIcon::Exclamation, MsgButtons::Ok};
    };
    struct Case { const char* name; const char* one; const char* two; Action action; std::int16_t first, second;
        bool closed, cancelled; std::vector<Message> messages; };
    const Case cases[] = {
        {"BothNumbers", "3", "4", ok, 3, 4, true, false, {}},
        {"EmptyBoxKeepsItsValue", "", "7", ok, 2, 7, true, false, {}},
        {"BothEmpty", "", "", ok, 2, 5, true, false, {}},
        {"HalvesRoundToEven", "2.5", "3.5", ok, 2, 4, true, false, {}},
        {"NotANumberStoresNeither", "1", "x", ok, 2, 5, false, false,
         {warning("\"x\" is not a number. Enter a tool change number such as 1, 2 or 3.")}},
        {"PastSixteenBits", "40000", "1", ok, 2, 5, false, false,
         {warning("The tool number \"40000\" is out of range. Enter a tool change number such as 1, 2 or 3.")}},
        {"CancelButton", "9", "9", cancel, 2, 5, true, true, {}}, {"Escape", "9", "9", escape, 2, 5, true, true, {}},
        {"CloseBox", "9", "9", closeBox, 2, 5, true, true, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Tool1Rig rig;
        rig.dialog.show();
        Child<QLineEdit>(rig.dialog, "txtTool1")->setText(QString::fromLatin1(c.one));
        Child<QLineEdit>(rig.dialog, "txtTool2")->setText(QString::fromLatin1(c.two));
        c.action(rig.dialog);
        EXPECT_EQ(rig.first, c.first);
        EXPECT_EQ(rig.second, c.second);
        EXPECT_EQ(rig.dialog.isVisible(), !c.closed);
        EXPECT_EQ(rig.dialogs.Messages, c.messages);
        EXPECT_EQ(rig.cancelled, c.cancelled);
    }
}

} // namespace
} // namespace backplot
