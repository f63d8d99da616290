#include "frmTool1.h"

#include "PlaybackRig.h"
#include "ToolChangePalette.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <functional>
#include <gtest/gtest.h>

namespace backplot {
namespace {

using Message = test::ScriptedDialogs::ShownMessage;

template <class T>
T* Child(const QWidget& parent, const char* name)
{
    T* child = parent.findChild<T*>(QString::fromLatin1(name));
    EXPECT_NE(child, nullptr) << name;
    return child;
}

// Runs `handle` on the next modal dialog once it is up; `handle` closes it.
void OnNextModal(std::function<void(QWidget*)> handle, int attempt = 0)
{
    QTimer::singleShot(attempt == 0 ? 0 : 10, [handle, attempt] {
        if (QWidget* modal = QApplication::activeModalWidget())
            handle(modal);
        else if (attempt < 200)
            OnNextModal(handle, attempt + 1);
    });
}

struct Tool1Rig {
    explicit Tool1Rig(QWidget* parent = nullptr) : dialog(parent, first, second, cancelled, dialogs) {}
    std::int16_t first = 2, second = 5;
    bool cancelled = false;
    test::ScriptedDialogs dialogs;
    frmTool1 dialog;
};

TEST(frmTool1, OpensCentredWithItsCaptionsAndTheStoredNumbers)
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
    struct Case {
        const char* name;
        const char* one;
        const char* two;
        Action action;
        std::int16_t first, second;
        bool closed, cancelled;
        std::vector<Message> messages;
    };
    const Case cases[] = {
        {"BothNumbers", "3", "4", ok, 3, 4, true, false, {}},
        {"EmptyBoxKeepsItsValue", "", "7", ok, 2, 7, true, false, {}},
        {"BothEmpty", "", "", ok, 2, 5, true, false, {}},
        {"HalvesRoundToEven", "2.5", "3.5", ok, 2, 4, true, false, {}},
        {"NotANumberStoresNeither", "1", "x", ok, 2, 5, false, false,
         {warning("\"x\" is not a number. Enter a tool change number such as 1, 2 or 3.")}},
        {"PastSixteenBits", "40000", "1", ok, 2, 5, false, false,
         {warning("The tool number \"40000\" is out of range. Enter a tool change number such as 1, 2 or 3.")}},
        {"CancelButton", "9", "9", cancel, 2, 5, true, true, {}},
        {"Escape", "9", "9", escape, 2, 5, true, true, {}},
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

TEST(frmTool1, EnterInTheFirstBoxMovesToTheSecondAndSelectsIt)
{
    Tool1Rig rig;
    rig.dialog.show();
    rig.dialog.activateWindow();
    QApplication::processEvents();
    auto* one = Child<QLineEdit>(rig.dialog, "txtTool1");
    auto* two = Child<QLineEdit>(rig.dialog, "txtTool2");
    one->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(one->selectedText(), QStringLiteral("2"));

    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    QApplication::sendEvent(one, &enter);
    QApplication::processEvents();
    EXPECT_EQ(QApplication::focusWidget(), two);
    EXPECT_EQ(two->selectedText(), QStringLiteral("5"));
    EXPECT_TRUE(rig.dialog.isVisible()); // Enter there did not press OK
    EXPECT_EQ(rig.first, 2);
}

TEST(frmTool1, ToolToToolCommandPlotsOrRedrawsAfterTheDialog)
{
    struct Case {
        const char* name;
        const char* one;
        const char* two;
        bool ok;
        std::vector<test::Drawn> cuts;
        int redraws;
        std::int16_t first, second;
    };
    const Case cases[] = {
        {"OkPlotsTheRangeTyped", "2", "3", true, {{3, ToolChangePalette[1]}, {4, ToolChangePalette[1]}}, 0, 2, 3},
        {"CancelRedrawsTheWholeProgram", "2", "3", false, {}, 1, 0, 0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        test::Rig rig;
        rig.Load({1, 1, 2, 2, 1, 1});
        int redraws = 0;
        QString title;
        OnNextModal([&](QWidget* modal) {
            title = modal->windowTitle();
            Child<QLineEdit>(*modal, "txtTool1")->setText(QString::fromLatin1(c.one));
            Child<QLineEdit>(*modal, "txtTool2")->setText(QString::fromLatin1(c.two));
            Child<QPushButton>(*modal, c.ok ? "cmdOk" : "cmdCancel")->click();
        });
        rig.plots.ToolToToolCommand(rig.canvas, nullptr, [&] { ++redraws; });

        EXPECT_EQ(title, QStringLiteral("Plot Tool to Tool"));
        EXPECT_EQ(rig.CutsDrawn(), c.cuts);
        EXPECT_EQ(redraws, c.redraws);
        EXPECT_FALSE(rig.translator.State().AbortTranslation);
        EXPECT_EQ(rig.plots.FirstTool, c.first);
        EXPECT_EQ(rig.plots.SecondTool, c.second);
    }
}

} // namespace
} // namespace backplot
