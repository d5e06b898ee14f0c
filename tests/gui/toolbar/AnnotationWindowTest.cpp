// SPDX-License-Identifier: GPL-3.0-or-later
// The annotation window: the tools' remembered settings, where the tool bar
// goes, what its finishing buttons set and post, and the preferences it
// keeps in step.
#include "AnnotationBench.h"
#include "settings/Defaults.h"
#include "settings/MemoryStore.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/DataOfUsers.h"
#include "toolbar/ui/AnnotatedImageController.h"
#include "toolbar/ui/SettingsBoxView.h"
#include "toolbar/ui/TipViews.h"
#include "toolbar/ui/ToolBarView.h"

#include <QCoreApplication>
#include <QMenu>
#include <QToolButton>
#include <QWidget>

#include <gtest/gtest.h>

using namespace toolbar;

TEST(DataOfUsers, firstStartKeepsDefaultsInMemoryUntilTheWindowCloses)
{
    Bench b;
    b.open();
    const DataOfUsers& data = b.controller.dataOfUsers();
    EXPECT_EQ(data.data().size(), 9);
    EXPECT_EQ(data.size(QStringLiteral("line")), 16);
    EXPECT_EQ(data.size(QStringLiteral("highlight")), 20);
    EXPECT_EQ(data.color(QStringLiteral("note")), QColor(Qt::red));
    EXPECT_FALSE(b.defaults.contains(QStringLiteral("DataOfUsers")));

    b.controller.dataOfUsers().setValue(QStringLiteral("arrow"), QStringLiteral("size"),
                                        QStringLiteral("12"));
    b.controller.closeWindow();
    DataOfUsers reread;
    reread.getUsersData(b.defaults);
    EXPECT_EQ(reread.size(QStringLiteral("arrow")), 12); // a size stored as a string
    EXPECT_EQ(reread.size(QStringLiteral("square")), 3);
    EXPECT_EQ(reread.color(QStringLiteral("square")), QColor(Qt::red));
}

TEST(DataOfUsers, changesReplaceAToolsDictionaryAndOddValuesReadAsAbsent)
{
    DataOfUsers data;
    settings::MemoryStore store;
    settings::Defaults defaults(store);
    defaults.setObject(QStringLiteral("DataOfUsers"),
                       QVariantMap{{"text", QVariantMap{{"size", "big"}}}});
    data.getUsersData(defaults);
    EXPECT_EQ(data.size(QStringLiteral("text")), 0);
    EXPECT_FALSE(data.color(QStringLiteral("text")).isValid());
    EXPECT_EQ(data.size(QStringLiteral("square")), 0); // a tool missing from the store

    const QVariantMap before = data.tool(QStringLiteral("text"));
    data.setValue(QStringLiteral("text"), QStringLiteral("colorAlpha"), 0.5);
    EXPECT_FALSE(before.contains(QStringLiteral("colorAlpha")));
    EXPECT_EQ(data.tool(QStringLiteral("text")).value(QStringLiteral("size")), QVariant("big"));
    EXPECT_DOUBLE_EQ(
        data.tool(QStringLiteral("text")).value(QStringLiteral("colorAlpha")).toDouble(), 0.5);
}

TEST(AnnotatedImageController, opensItsBarUnderTheSelectionAndClosesIt)
{
    Bench b;
    b.open();
    ClipToolBar* bar = b.controller.toolBar();
    ASSERT_NE(bar, nullptr);
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->parentWidget(), &b.overlay);
    EXPECT_EQ(QRectF(bar->geometry()),
              placeButtonBox(QRectF(300, 200, 480, 360), QSizeF(1920, 1080)));
    EXPECT_TRUE(b.state.clipToolbarWindowOpened);
    EXPECT_TRUE(b.controller.barContains(b.overlay.mapToGlobal(bar->geometry().center())));

    b.bus.send(core::Message::HiddenButtonOfClipToolbarWindow);
    EXPECT_FALSE(bar->isVisible());
    b.bus.send(core::Message::UnhiddenButtonOfClipToolbarWindow);
    EXPECT_TRUE(bar->isVisible());

    b.controller.closeWindow();
    EXPECT_FALSE(b.state.clipToolbarWindowOpened);
    EXPECT_EQ(bar->parentWidget(), nullptr);
    EXPECT_FALSE(b.controller.barContains(QPoint(500, 580)));
}

TEST(AnnotatedImageController, finishingButtonsSetTheirFlagsAndAskForTheFinish)
{
    Bench b;
    b.open();
    b.controller.toolBar()->button(QStringLiteral("save"))->click();
    EXPECT_EQ(b.state.finish.asked(), capture::FinishDestination::File);
    EXPECT_TRUE(b.state.startScreenShot);
    EXPECT_FALSE(b.controller.toolBar()->isVisible());
    b.settle();
    EXPECT_EQ(b.posted.names, QStringList{QStringLiteral("StartScreenShots")});

    b.open();
    EXPECT_EQ(b.state.finish.asked(), std::nullopt); // a new capture's window starts clean
    b.controller.toolBar()->button(QStringLiteral("copyToPaste"))->click();
    EXPECT_EQ(b.state.finish.asked(), capture::FinishDestination::Clipboard);

    b.open();
    b.controller.toolBar()->button(QStringLiteral("map"))->click();
    EXPECT_EQ(b.state.finish.asked(), capture::FinishDestination::Pin);
    EXPECT_FALSE(b.state.finish.shutterSounds(false)); // a pin, not a save

    // The pin outlives the close for the finish, for a tenth of a second.
    b.controller.closeWindow();
    b.clock.advance(std::chrono::milliseconds(99));
    EXPECT_TRUE(b.state.finish.isPin());
    b.clock.advance(std::chrono::milliseconds(1));
    EXPECT_FALSE(b.state.finish.isPin());
    b.settle();
    EXPECT_EQ(b.posted.names, QStringList(3, QStringLiteral("StartScreenShots")));

    b.posted.names.clear();
    b.open();
    b.controller.toolBar()->button(QStringLiteral("cancel"))->click();
    b.settle();
    EXPECT_EQ(b.posted.names, QStringList{QStringLiteral("cancelScreenShot")});

    // The drawing tools are there but end nothing.
    b.posted.names.clear();
    b.controller.toolBar()->button(QStringLiteral("arrow"))->click();
    b.settle();
    EXPECT_TRUE(b.posted.names.isEmpty());
}

TEST(AnnotatedImageController, exclusivePairsAndShortCutsFollowThePreferences)
{
    Bench b;
    // Both off at the first load: the blur and the rectangle are turned on.
    b.open();
    EXPECT_TRUE(b.defaults.boolForKey(QStringLiteral("selectedGaussianBlured")));
    EXPECT_FALSE(b.defaults.boolForKey(QStringLiteral("selectedMosaic")));
    EXPECT_TRUE(b.defaults.boolForKey(QStringLiteral("squareOfHighlight")));
    EXPECT_FALSE(b.defaults.boolForKey(QStringLiteral("ellipseOfHighlight")));

    // Turning one on turns its partner off; the echo of that write does not
    // swallow the next real change.
    b.defaults.setBool(QStringLiteral("selectedMosaic"), true);
    EXPECT_FALSE(b.defaults.boolForKey(QStringLiteral("selectedGaussianBlured")));
    b.defaults.setBool(QStringLiteral("selectedGaussianBlured"), true);
    EXPECT_FALSE(b.defaults.boolForKey(QStringLiteral("selectedMosaic")));
    b.defaults.setBool(QStringLiteral("ellipseOfHighlight"), true);
    EXPECT_FALSE(b.defaults.boolForKey(QStringLiteral("squareOfHighlight")));
}

TEST(AnnotatedImageController, theBarShowsItsToolsBoxItsTipsAndWhatUndoCanDo)
{
    Bench b;
    b.open();
    ToolBarView* view = b.controller.toolBarView();
    ClipToolBar* bar = b.controller.toolBar();
    const QRectF box = placeButtonBox(QRectF(300, 200, 480, 360), QSizeF(1920, 1080));
    EXPECT_EQ(bar->findChildren<QToolButton*>().size(), 15);
    QToolButton* undo = bar->button(QStringLiteral("undo"));
    EXPECT_FALSE(undo->isEnabled());
    EXPECT_FALSE(view->colorBox()->isVisible());

    // The rectangle's button: its box hangs under it, its button pressed.
    bar->button(QStringLiteral("square"))->click();
    EXPECT_TRUE(bar->button(QStringLiteral("square"))->isChecked());
    ASSERT_TRUE(view->colorBox()->isVisible());
    EXPECT_EQ(QRectF(view->colorBox()->geometry()), QRectF(box.left(), box.bottom() + 5, 155, 45));
    EXPECT_EQ(view->colorBox()->tool(), QStringLiteral("square"));
    EXPECT_TRUE(
        b.controller.barContains(b.overlay.mapToGlobal(view->colorBox()->geometry().center())));
    // The arrow's box stands 45 points further right.
    bar->button(QStringLiteral("arrow"))->click();
    EXPECT_FALSE(bar->button(QStringLiteral("square"))->isChecked());
    EXPECT_EQ(view->colorBox()->x(), box.left() + 45);

    // A stroke can be undone; undone, the button greys again.
    b.stroke(QPointF(400, 400), QPointF(500, 450));
    EXPECT_TRUE(undo->isEnabled());
    undo->click();
    EXPECT_TRUE(b.controller.everythingUndone());
    EXPECT_FALSE(undo->isEnabled());

    // Resting on the rectangle's button: the words in the overlay's corner
    // at once, its tip half a second later, over the button.
    const QPointF square = buttonCentre(box, QStringLiteral("square"));
    b.hover(square);
    ASSERT_TRUE(view->buttonTip()->isVisible());
    EXPECT_TRUE(view->buttonTip()->text().startsWith(QStringLiteral("Stop move the mouse")));
    EXPECT_EQ(view->buttonTip()->geometry().bottom() + 1, 1080 - 10);
    EXPECT_EQ(view->tipBox(0), nullptr);
    b.clock.advance(std::chrono::milliseconds(500));
    TipBoxView* tip = view->tipBox(0);
    ASSERT_NE(tip, nullptr);
    ASSERT_TRUE(tip->isVisible());
    EXPECT_EQ(tip->objectName(), QStringLiteral("boxSquare"));
    EXPECT_EQ(tip->geometry().bottom() + 1, static_cast<int>(box.top()));
    EXPECT_NEAR(tip->geometry().center().x(), box.left() + 17, 1);
    EXPECT_TRUE(b.controller.barContains(b.overlay.mapToGlobal(tip->geometry().center())));

    // Its menu holds the short cut; keys of other buttons are refused, and a
    // choice becomes the preference.
    QToolButton* popUp = tip->menuButton();
    ASSERT_NE(popUp, nullptr);
    EXPECT_EQ(popUp->objectName(), QStringLiteral("popUpButtonSquare"));
    EXPECT_EQ(popUp->text(), QStringLiteral("1"));
    QAction* two = nullptr;
    QAction* q = nullptr;
    for (QAction* action : popUp->menu()->actions()) {
        if (action->text() == QStringLiteral("2"))
            two = action;
        if (action->text() == QStringLiteral("Q"))
            q = action;
    }
    ASSERT_TRUE(two != nullptr && q != nullptr);
    EXPECT_FALSE(two->isEnabled()); // the ellipse's
    q->trigger();
    EXPECT_EQ(b.defaults.stringForKey(QStringLiteral("squareShortcut")), QStringLiteral("Q"));

    // Off the bar the corner's words go and the tip fades out.
    b.hover(QPointF(900, 100));
    EXPECT_FALSE(view->buttonTip()->isVisible());
    b.clock.advance(std::chrono::seconds(1));
    EXPECT_FALSE(tip->isVisible());

    // A click closes a waiting tip before it opens; closing the window
    // leaves no timer to act.
    b.hover(buttonCentre(box, QStringLiteral("line")));
    b.controller.closeWindow();
    b.clock.advance(std::chrono::seconds(10));
    EXPECT_EQ(view->tipBox(2), nullptr);
    EXPECT_FALSE(view->buttonTip()->isVisible());
}

TEST(AnnotatedImageController, aControlTapMovesABarAtTheScreensBottomAwayAndBack)
{
    Bench b;
    // So low that the bar goes inside the selection, 53 points up.
    b.open(QRectF(300, 200, 480, 860));
    ClipToolBar* bar = b.controller.toolBar();
    ASSERT_EQ(bar->geometry().bottom() + 1, 1080 - 53);
    const auto tap = [&] {
        b.controller.flagsChanged(Qt::MetaModifier, &b.overlay);
        b.controller.flagsChanged(Qt::NoModifier, &b.overlay);
    };
    // Only over the overlay that holds the bar.
    QWidget other;
    b.controller.flagsChanged(Qt::MetaModifier, &other);
    b.controller.flagsChanged(Qt::NoModifier, &other);
    b.clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(bar->geometry().bottom() + 1, 1080 - 53);

    tap();
    b.clock.advance(std::chrono::milliseconds(3));
    EXPECT_EQ(bar->geometry().bottom() + 1, 1080 - 51);
    b.clock.advance(std::chrono::milliseconds(135));
    EXPECT_EQ(bar->geometry().bottom() + 1, 1080 + 39);
    tap();
    b.clock.advance(std::chrono::milliseconds(138));
    EXPECT_EQ(bar->geometry().bottom() + 1, 1080 - 53);

    // The double tap of Control saves instead.
    b.defaults.setObject(QStringLiteral("doubleClickModifierKey"), QStringLiteral("Control"));
    tap();
    b.clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(bar->geometry().bottom() + 1, 1080 - 53);
}
