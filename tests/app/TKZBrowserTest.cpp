#include "TKZBrowser.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMetaProperty>
#include <QToolButton>
#include <gtest/gtest.h>

namespace backplot {
namespace {

TEST(TKZBrowser, PathRoundTripTypingChangeSignalAndBrowseStart)
{
    TKZBrowser browser;
    EXPECT_STREQ(browser.metaObject()->userProperty().name(), "Path");
    QStringList changed;
    QObject::connect(&browser, &TKZBrowser::Changed, [&](const QString& path) { changed << path; });

    browser.SetPath("/srv/parts");
    EXPECT_EQ(browser.Path(), "/srv/parts");
    EXPECT_EQ(browser.findChild<QLineEdit*>("txtPath")->text(), "/srv/parts");
    browser.setProperty("Path", "/srv/other");
    EXPECT_EQ(browser.Path(), "/srv/other");
    EXPECT_EQ(changed, QStringList({"/srv/parts", "/srv/other"}));

    // A key typed into the field.
    QKeyEvent key(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
    QApplication::sendEvent(browser.Field(), &key);
    EXPECT_EQ(browser.Path(), "/srv/otherx");
    EXPECT_EQ(changed.count(), 3);

    browser.SetFieldName("New work directory");
    EXPECT_EQ(browser.Field()->accessibleName(), "New work directory");
    EXPECT_EQ(browser.Button()->accessibleName(), "Browse for New work directory");

    // Browse starts at the field, or at the start folder when the field is empty.
    const struct { const char* behaviour; QString typed, answer, expectedStart, expectedPath; int changes; } rows[] = {
        {"empty field starts at the start folder", "", "/srv/chosen", "/srv/start", "/srv/chosen", 1},
        {"typed field starts there", " /srv/typed ", "/srv/chosen", "/srv/typed", "/srv/chosen", 1},
        {"cancel keeps the text", "/srv/typed", "", "/srv/typed", "/srv/typed", 0},
    };
    for (const auto& row : rows) {
        TKZBrowser browser;
        browser.SetPath(row.typed);
        browser.SetStartFolder("/srv/start");
        browser.SetDialogTitle("Work Directory");
        QString askedStart, askedTitle;
        browser.SetFolderChooser([&](QWidget*, const QString& title, const QString& start) {
            askedTitle = title;
            askedStart = start;
            return row.answer;
        });
        int changed = 0;
        QObject::connect(&browser, &TKZBrowser::Changed, [&] { ++changed; });
        browser.findChild<QToolButton*>("cmdBrowse")->click();
        EXPECT_EQ(askedTitle, "Work Directory") << row.behaviour;
        EXPECT_EQ(askedStart, row.expectedStart) << row.behaviour;
        EXPECT_EQ(browser.Path(), row.expectedPath) << row.behaviour;
        EXPECT_EQ(changed, row.changes) << row.behaviour;
    }
}

} // namespace
} // namespace backplot
