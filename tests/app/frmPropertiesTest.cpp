#include "GuiDialogs.h"
#include "TKZBrowser.h"
#include "TKZColorSelector.h"
#include "WindowFixture.h"
#include "frmProperties.h"

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMetaProperty>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolButton>
#include <tuple>

inline void PrintTo(const QVariant& value, std::ostream* os) { *os << value.toString().toStdString(); }

namespace backplot {
namespace {

class Properties : public ::testing::Test {
public: // the table rows below reach the helpers through a reference
    frmProperties& Open()
    {
        dialog = std::make_unique<frmProperties>(settings, colors, state, dialogs);
        QObject::connect(dialog.get(), &frmProperties::MachineTypeApplied,
                         [this](bool mill) { millApplied.push_back(mill); });
        return *dialog;
    }
    template <typename T = QWidget>
    T* Find(const QString& name) const
    {
        auto* found = dialog->findChild<T*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    QLineEdit* Text(const QString& name) const { return Find<QLineEdit>(name); }
    TKZColorSelector* Selector(const QString& name) const { return Find<TKZColorSelector>(name); }
    QPushButton* Button(int index) const { return Find<QPushButton>(QStringLiteral("cmdProperties%1").arg(index)); }
    // Apply as the user reaches it: once the timer has enabled it.
    void Apply()
    {
        dialog->Timer1_Timer();
        Button(2)->click();
    }
    void ChooseSlowTime(const QString& item)
    {
        auto* combo = Find<QComboBox>("cmbSloMo");
        combo->setCurrentIndex(combo->findText(item));
    }
    void FillToolNumbers(const QStringList& texts)
    {
        for (int i = 0; i < texts.size(); ++i)
            Text(QStringLiteral("txtToolChangeNumber%1").arg(i))->setText(texts[i]);
    }

    Settings settings;
    ToolColorTable colors;
    TranslationState state;
    test::ScriptedDialogs dialogs;
    std::unique_ptr<frmProperties> dialog;
    std::vector<bool> millApplied;
};

// Every caption of the dialog, page by page in the order of its controls: the program's own words.
TEST_F(Properties, PagesControlsAndCaptions)
{
    Open();
    EXPECT_EQ(dialog->windowTitle(), "Properties");
    auto* tabs = Find<QTabWidget>("TabProp");
    QStringList shown;
    for (int i = 0; i < tabs->count(); ++i) {
        shown << "[" + tabs->tabText(i) + "/" + tabs->tabBar()->tabData(i).toString() + "]";
        for (QWidget* control : tabs->widget(i)->findChildren<QWidget*>()) {
            const QString text = qobject_cast<QGroupBox*>(control) ? qobject_cast<QGroupBox*>(control)->title()
                                                                   : control->property("text").toString();
            if (!text.isEmpty() && !qobject_cast<QLineEdit*>(control))
                shown << text;
        }
    }
    for (const char* name : {"cmdProperties0", "cmdProperties1", "cmdProperties2"})
        shown << Find<QPushButton>(name)->text();
    EXPECT_EQ(shown.join(QLatin1Char('|')),
              "[Files/Files]|Default File Extension|Location of work directory|...|Current:|New:|Default file open|"
              "Mill|Lathe|Display Full Path|Yes|No|[Axis Lines/Axis]|Axis Line Style|Solid|Dash|Current|Axis Line "
              "Color|[Slow Motion/SMotion]|Slow Motion Timer|Delay between elements (seconds):|[Back Ground "
              "Color/BackGrd]|Color:|Sample:|[Tool Color/Tools]|Use Tool Colors|Tool 1|Tool 2|Tool 3|Tool 4|Tool 5|"
              "Tool 6|Tool 7|Tool 8|Tool 9|Tool 10|Default Line Color|Current tool numbers|&Clear All|OK|Cancel|Apply");
    for (const char* name : {"picLineStyle0", "picLineStyle1"})
        EXPECT_EQ(Find<QToolButton>(name)->toolTip(), "Click to select this line type.");
    QStringList items;
    auto* combo = Find<QComboBox>("cmbSloMo");
    for (int i = 0; i < combo->count(); ++i)
        items << combo->itemText(i);
    EXPECT_EQ(items.join(' '), ".05 .10 .15 .20 .25 .30 .35 .45 .55 .65 .75 1");

    // What a screen reader says for the fields that have no caption of their own.
    EXPECT_EQ(Text("txtToolChangeNumber2")->accessibleName(), "Tool 3 number");
    EXPECT_EQ(Selector("clrToolChange2")->accessibleName(), "Tool 3 color");
}

TEST_F(Properties, LoadShowsTheSettingsAndMarksNothing)
{
    settings.FileExt = "*.nc";
    settings.WorkDir = "/no/such/folder";
    settings.SlowTime = 0.45f;
    settings.Mill = false;
    settings.AxisSelectedColor = 4;
    settings.AxisColor = 0x0000FF; // red, not QBColor(4): the line preview shows this value
    settings.Backcolor = 0x123456; // not QBColor(BackcolorSelected): the sample shows this value
    settings.BackcolorSelected = 3;
    settings.DefaultSeletedColor = 12;
    settings.ToolColor = true;
    colors[0] = {17, 0, 5};
    colors[9] = {4, 0, 14};
    state.ToolChanges = {{12, 3}, {7, 9}, {3, 20}};
    state.ToolChangeCount = 3;
    Open();

    // Each control's value as a user property: text, current item, tick, colour index, path.
    const std::pair<const char*, QVariant> shown[] = {
        {"txtExt", "*.nc"}, {"txtCurrentDir", "/no/such/folder"}, {"TKZBrowser1", ""}, {"cmbSloMo", ".45"},
        {"chkOpen1", true}, {"piccolor", 4}, {"clrBack", 3}, {"clrDefaultColor", 12}, {"chkToolColor", true},
        {"txtToolChangeNumber0", "17"}, {"clrToolChange0", 5}, {"txtToolChangeNumber9", "4"}, {"clrToolChange9", 14}};
    for (const auto& [name, value] : shown) {
        const QWidget* control = Find(name);
        EXPECT_EQ(control->metaObject()->userProperty().read(control), value) << name;
    }
    EXPECT_EQ(Find<QFrame>("picBColor")->palette().color(QPalette::Window), QColor(0x56, 0x34, 0x12));
    QStringList listed;
    auto* list = Find<QListWidget>("lstToolChanges");
    for (int i = 0; i < list->count(); ++i)
        listed << list->item(i)->text();
    EXPECT_EQ(listed, QStringList({"12", "7", "3"}));

    // Loading marks nothing: Apply waits for the first edit.
    EXPECT_EQ(dialog->PendingPage(), frmProperties::NoPage);
    dialog->Timer1_Timer();
    EXPECT_FALSE(Button(2)->isEnabled());
    EXPECT_TRUE(Find<QTimer>("Timer1")->isActive());

    // A slow time between the items selects none, and Apply keeps it.
    settings.SlowTime = 0.4f;
    Open();
    EXPECT_EQ(Find<QComboBox>("cmbSloMo")->currentIndex(), -1);
    dialog->ApplyChanges(3);
    EXPECT_EQ(settings.SlowTime, 0.4f);

    // The line preview is drawn as the canvas draws the axis: dash 18 pixels on, 6 off.
    const auto pixel = [this](int x, int y) {
        return Find<QLabel>("picCurrent")->pixmap().toImage().pixelColor(x, y);
    };
    const QColor red(255, 0, 0), back(0x56, 0x34, 0x12);
    const std::tuple<int, int, QColor> dashed[] = {
        {0, 10, red}, {17, 10, red}, {18, 10, back}, {23, 10, back}, {24, 10, red}, {20, 9, back}};
    for (const auto& [x, y, colour] : dashed)
        EXPECT_EQ(pixel(x, y), colour) << x << ", " << y;
    Find<QToolButton>("picLineStyle0")->click();
    EXPECT_EQ(pixel(20, 10), red);
}

// Each edit marks its own page, and the timer then enables Apply.
TEST_F(Properties, EditsMarkTheirPage)
{
    const struct { const char* behaviour; std::function<void(Properties&)> edit; int page; } rows[] = {
        {"extension typed", [](Properties& t) { t.Text("txtExt")->setText("*.tap"); }, 1},
        {"folder typed", [](Properties& t) { t.Find<TKZBrowser>("TKZBrowser1")->SetPath("/tmp"); }, 1},
        {"lathe chosen", [](Properties& t) { t.Find<QRadioButton>("chkOpen1")->click(); }, 1},
        {"solid sample clicked", [](Properties& t) { t.Find<QToolButton>("picLineStyle0")->click(); }, 2},
        {"axis colour chosen", [](Properties& t) { t.Selector("piccolor")->SetIndex(3); }, 2},
        {"slow time chosen", [](Properties& t) { t.ChooseSlowTime(".75"); }, 3},
        {"background chosen", [](Properties& t) { t.Selector("clrBack")->SetIndex(2); }, 4},
        {"tool colours ticked", [](Properties& t) { t.Find<QCheckBox>("chkToolColor")->click(); }, 5},
        {"tool number typed", [](Properties& t) { t.Text("txtToolChangeNumber4")->setText("8"); }, 5},
        {"tool colour chosen", [](Properties& t) { t.Selector("clrToolChange7")->SetIndex(6); }, 5},
        {"default colour chosen", [](Properties& t) { t.Selector("clrDefaultColor")->SetIndex(1); }, 5},
        {"clear all", [](Properties& t) { t.Find<QPushButton>("cmdClear")->click(); }, 5},
    };
    for (const auto& row : rows) {
        Open();
        row.edit(*this);
        EXPECT_EQ(dialog->PendingPage(), row.page) << row.behaviour;
        EXPECT_FALSE(Button(2)->isEnabled()) << row.behaviour;
        dialog->Timer1_Timer();
        EXPECT_TRUE(Button(2)->isEnabled()) << row.behaviour;
    }
    // Left alone, the timer enables Apply by itself.
    Open();
    Text("txtExt")->setText("*.nc");
    QElapsedTimer waited;
    waited.start();
    while (!Button(2)->isEnabled() && waited.elapsed() < 2000)
        QApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_TRUE(Button(2)->isEnabled());
}

// The line style, the tool-colour tick and Clear All take effect at the click; a slow
// time waiting for Apply is dropped by OK and Cancel alike.
TEST_F(Properties, OkAndCancelKeepOnlyWhatTookEffectAtOnce)
{
    for (int button : {0, 1}) {
        settings = Settings();
        colors = ToolColorTable();
        Open();
        Find<QToolButton>("picLineStyle0")->click();
        Find<QCheckBox>("chkToolColor")->click();
        Find<QPushButton>("cmdClear")->click();
        ChooseSlowTime(".55");
        Button(button)->click();
        EXPECT_EQ(dialog->result(), button == 0 ? QDialog::Accepted : QDialog::Rejected);
        EXPECT_EQ(settings.AxisLine, 0) << button;
        EXPECT_TRUE(settings.ToolColor) << button;
        EXPECT_EQ(settings.SlowTime, 0.1f) << button;
        for (int i = 0; i < ToolColorTable::Size; ++i) {
            EXPECT_EQ(colors[i].ToolNumber + colors[i].ColorIndex + static_cast<int>(colors[i].Color), 0) << i;
            EXPECT_EQ(Text(QStringLiteral("txtToolChangeNumber%1").arg(i))->text(), "") << i;
            EXPECT_EQ(Selector(QStringLiteral("clrToolChange%1").arg(i))->Index(), 0) << i;
        }
        EXPECT_EQ(dialog->PendingPage(), frmProperties::NoPage);
        EXPECT_FALSE(Find<QTimer>("Timer1")->isActive());
    }
}

TEST_F(Properties, EachPageWritesItsSettingsAndApplyOnlyTheLastMarked)
{
    Open();
    Text("txtExt")->setText("  *.nc ");
    Find<QRadioButton>("chkOpen1")->click();
    // A work folder that does not exist: refused, nothing of the page written, still pending.
    Find<TKZBrowser>("TKZBrowser1")->SetPath("/no/such/folder");
    Apply();
    ASSERT_EQ(dialogs.Messages.size(), 1u);
    EXPECT_EQ(dialogs.Messages[0].Text,
              "The folder \"/no/such/folder\" does not exist.\r\nChoose an existing folder for the work directory.");
    EXPECT_EQ(settings.FileExt, "*.*");
    EXPECT_TRUE(settings.Mill);
    EXPECT_TRUE(millApplied.empty());
    EXPECT_EQ(dialog->PendingPage(), 1);

    const test::ScratchDir folder;
    const QString existing = QString::fromStdString(folder.Path().string());
    Find<TKZBrowser>("TKZBrowser1")->SetPath(existing);
    ASSERT_TRUE(dialog->ApplyChanges(1));
    EXPECT_EQ(settings.FileExt, "*.nc");
    EXPECT_EQ(settings.WorkDir, existing.toStdString());
    EXPECT_EQ(Text("txtCurrentDir")->text(), existing);
    EXPECT_FALSE(settings.Mill);
    EXPECT_EQ(millApplied, std::vector<bool>{false});

    Text("txtExt")->setText("   ");
    Find<TKZBrowser>("TKZBrowser1")->SetPath("");
    dialog->ApplyChanges(1);
    EXPECT_EQ(settings.FileExt, "*.*");
    EXPECT_EQ(settings.WorkDir, existing.toStdString()); // an empty folder field changes nothing

    // Page 2 untouched: the index shown is 15, so the axis turns white.
    dialog->ApplyChanges(2);
    EXPECT_EQ(settings.AxisSelectedColor, 15);
    EXPECT_EQ(settings.AxisColor, 0xFFFFFF);
    Selector("piccolor")->SetIndex(4);
    dialog->ApplyChanges(2);
    EXPECT_EQ(settings.AxisColor, 0x000080);

    Selector("clrBack")->SetIndex(1);
    for (int outside : {0, 6, 999})
        EXPECT_TRUE(dialog->ApplyChanges(outside));
    EXPECT_EQ(settings.Backcolor, 0xFFFFFF);

    // Apply writes only the last page marked.
    Open();
    ChooseSlowTime(".65");              // page 3 ...
    Selector("clrBack")->SetIndex(12);  // ... then page 4
    EXPECT_EQ(Find<QFrame>("picBColor")->palette().color(QPalette::Window), QColor(255, 0, 0));
    Apply();
    EXPECT_EQ(settings.Backcolor, 0x0000FF);
    EXPECT_EQ(settings.BackcolorSelected, 12);
    EXPECT_EQ(settings.SlowTime, 0.1f);
    EXPECT_EQ(dialog->PendingPage(), frmProperties::NoPage);
    // Going back to page 3 marks it again.
    ChooseSlowTime(".15");
    Apply();
    EXPECT_EQ(settings.SlowTime, 0.15f);
}

TEST_F(Properties, ToolNumbersFillTheTableAndAnyButWholeNumbersAreRefused)
{
    Open();
    FillToolNumbers({"5", "", " 42 ", "0", "7", "8", "9", "10", "11", "32767"});
    Selector("clrToolChange0")->SetIndex(13);
    Selector("clrToolChange1")->SetIndex(6);
    Selector("clrDefaultColor")->SetIndex(12);
    Apply();
    EXPECT_EQ(Text("txtToolChangeNumber1")->text(), "0");
    EXPECT_EQ(colors[0].ToolNumber, 5);
    EXPECT_EQ(colors[0].Color, 0xFF00FFu);
    EXPECT_EQ(colors[0].ColorIndex, 13);
    EXPECT_EQ(colors[1].ToolNumber, 0);
    EXPECT_EQ(colors[1].Color, 0x008080u);
    EXPECT_EQ(colors[2].ToolNumber, 42);
    EXPECT_EQ(colors[9].ToolNumber, 32767);
    EXPECT_EQ(settings.DefaultColor, 0x0000FF);
    EXPECT_EQ(settings.DefaultSeletedColor, 12);
    EXPECT_EQ(dialog->PendingPage(), frmProperties::NoPage);

    settings = Settings();
    for (const char* bad : {"abc", "4.5", "-1", "32768", "1e3", "T5"}) {
        dialogs.Messages.clear();
        colors = ToolColorTable();
        const ToolColorTable before = colors;
        Open();
        FillToolNumbers({"", "3"});
        Text("txtToolChangeNumber3")->setText(bad);
        Selector("clrDefaultColor")->SetIndex(2);
        Apply();
        ASSERT_EQ(dialogs.Messages.size(), 1u) << bad;
        EXPECT_EQ(dialogs.Messages[0].Text, std::string("Tool 4: \"") + bad +
                                                "\" is not a tool number.\r\nEnter a whole number from 0 to 32767.");
        EXPECT_EQ(dialogs.Messages[0].Title, "Corvane Backplot");
        EXPECT_EQ(dialogs.Messages[0].Icon, MsgIcon::Exclamation);
        // Nothing of the page is written, and it stays pending for a second try.
        for (int i = 0; i < ToolColorTable::Size; ++i)
            EXPECT_EQ(colors[i].ToolNumber, before[i].ToolNumber) << bad << " row " << i;
        EXPECT_EQ(settings.DefaultSeletedColor, 9) << bad;
        EXPECT_EQ(Text("txtToolChangeNumber0")->text(), "") << bad;
        EXPECT_EQ(dialog->PendingPage(), 5) << bad;
        EXPECT_EQ(Find<QTabWidget>("TabProp")->currentIndex(), 4) << bad;
    }
}

// The Properties command as the window runs it: busy pointer, the dialog, the window's
// after-step, the default pointer; the machine type reaches the window at Apply.
TEST_F(Properties, ShowModalRunsTheCommandInOrder)
{
    std::vector<std::string> events;
    dialogs.OnPointer = [&](MousePointer p) { events.push_back(p == MousePointer::Hourglass ? "busy" : "default"); };
    test::OnNextModal([&](QWidget* modal) {
        auto* open = qobject_cast<frmProperties*>(modal);
        ASSERT_NE(open, nullptr);
        events.push_back("shown");
        open->findChild<QRadioButton*>("chkOpen1")->click();
        open->Timer1_Timer();
        open->findChild<QPushButton*>("cmdProperties2")->click();
        open->findChild<QPushButton*>("cmdProperties0")->click();
    });
    frmProperties::ShowModal(
        settings, colors, state, dialogs, nullptr,
        [&](bool mill) { events.push_back(mill ? "mill" : "lathe"); }, [&] { events.push_back("after"); });
    EXPECT_EQ(events, (std::vector<std::string>{"busy", "shown", "lathe", "after", "default"}));
    EXPECT_FALSE(settings.Mill);

    // With the window's own dialogs the pointer is the hourglass all the while it is open.
    GuiDialogs gui;
    std::optional<Qt::CursorShape> pointer;
    test::OnNextModal([&](QWidget* modal) {
        if (const QCursor* shown = QApplication::overrideCursor())
            pointer = shown->shape();
        modal->close();
    });
    frmProperties::ShowModal(settings, colors, state, gui, nullptr, {}, {});
    EXPECT_EQ(pointer, Qt::WaitCursor);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

using PropertiesCommand = test::WindowFixture;

TEST_F(PropertiesCommand, NewBackColourRedrawsThePlotAndLatheReachesTheTranslator)
{
    StartShown();
    OpenCommand(programs.Write("part.nc", "G1 X10 Y0\r\nX10 Y5\r\n"));
    const QColor blue(0, 0, 255), red(255, 0, 0);
    const int cutPixels = test::CountOf(Picture(), blue);
    ASSERT_GT(cutPixels, 0);
    ASSERT_TRUE(window->translator().State().Mill);

    bool shown = false;
    test::OnNextModal([&](QWidget* modal) {
        auto* open = qobject_cast<frmProperties*>(modal);
        if (!open)
            return void(modal->close());
        shown = true;
        const auto apply = [open] {
            open->Timer1_Timer();
            open->findChild<QPushButton*>("cmdProperties2")->click();
        };
        open->findChild<TKZColorSelector*>("clrBack")->SetIndex(12);
        apply();
        open->findChild<QRadioButton*>("chkOpen1")->click();
        apply();
        open->findChild<QPushButton*>("cmdProperties0")->click();
    });
    Button(ToolbarKey::Properties)->trigger();
    EXPECT_TRUE(shown);

    EXPECT_EQ(window->settings().Backcolor, 0x0000FF);
    EXPECT_EQ(Picture().pixelColor(0, 0), red);
    EXPECT_EQ(test::CountOf(Picture(), blue), cutPixels); // the same cuts, drawn again on red
    EXPECT_FALSE(window->settings().Mill);
    EXPECT_FALSE(window->translator().State().Mill);

    // Again: tool colours take effect at the tick, and the toolbar shows them; Mill waits
    // for an Apply that Cancel does not give.
    test::OnNextModal([&](QWidget* modal) {
        modal->findChild<QCheckBox*>("chkToolColor")->click();
        modal->findChild<QRadioButton*>("chkOpen0")->click();
        modal->findChild<QPushButton*>("cmdProperties1")->click();
    });
    ASSERT_FALSE(Button(ToolbarKey::ToolColors)->isChecked());
    Button(ToolbarKey::Properties)->trigger();
    EXPECT_TRUE(window->settings().ToolColor);
    EXPECT_TRUE(Button(ToolbarKey::ToolColors)->isChecked());
    EXPECT_FALSE(window->settings().Mill);
}

} // namespace
} // namespace backplot
