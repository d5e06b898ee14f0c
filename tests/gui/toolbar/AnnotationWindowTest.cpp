// SPDX-License-Identifier: GPL-3.0-or-later
// The annotation window: the tools' remembered settings, where the tool bar
// goes, what its finishing buttons set and post, and the preferences it
// keeps in step.
#include "capture/logic/CaptureContext.h"
#include "core/MessageBus.h"
#include "settings/Defaults.h"
#include "settings/MemoryStore.h"
#include "support/BusRecorder.h"
#include "support/SteppedClock.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/DataOfUsers.h"
#include "toolbar/ui/AnnotatedImageController.h"

#include <QCoreApplication>
#include <QToolButton>
#include <QWidget>

#include <gtest/gtest.h>

using namespace toolbar;

namespace {

struct Bench
{
    settings::MemoryStore store;
    settings::Defaults defaults{store};
    core::MessageBus bus;
    capture::CaptureContext context;
    capture::CaptureState& state = context.capture();
    SteppedClock clock;
    AnnotatedImageController controller{context, defaults, bus, clock};
    BusRecorder posted{bus};
    QWidget overlay;

    Bench()
    {
        overlay.resize(1920, 1080);
        overlay.show();
    }
    void open(QRectF selection = QRectF(300, 200, 480, 360))
    {
        controller.openWindow(&overlay, [selection] { return selection; });
    }
    // Posted messages arrive on the next turn of the loop.
    static void settle() { QCoreApplication::processEvents(); }
};

} // namespace

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
