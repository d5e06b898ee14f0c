// SPDX-License-Identifier: GPL-3.0-or-later
// A capture freezes every screen under an overlay and ends cleanly, on a
// real two-monitor desktop.
#include "support/CaptureFixture.h"

using namespace e2e;
using namespace std::chrono_literals;

namespace {
using CaptureOverlay = CaptureFixture;
} // namespace

// One instance through every way a capture starts and ends: each capture
// after the first also proves the one before it left Kelvo ready.
TEST_F(CaptureOverlay, FreezesEveryScreenAndEndsByEscapeOrRightClickOnly)
{
    SolidWindow red(*x, QRect(300, 200, 400, 300), Qt::red, QStringLiteral("red"));
    SolidWindow blue(*x, QRect(2100, 150, 300, 200), Qt::blue, QStringLiteral("blue"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(500, 350) == QColor(Qt::red); }));
    ASSERT_TRUE(waitFor([&] { return x->pixel(2250, 250) == QColor(Qt::blue); }));
    startKelvo();
    x->movePointer(100, 900);
    const QImage before = x->grabRoot();
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();

    // The window underneath changes; the screen keeps showing the moment of
    // the trigger, on both monitors, pixel for pixel.
    red.setColor(Qt::green);
    ASSERT_TRUE(waitFor([&] { return x->grabRoot() == before; }));
    EXPECT_EQ(x->pixel(500, 350), QColor(Qt::red));

    x->tapKey("Escape");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); }));
    // With the overlay gone the live desktop shows the change.
    EXPECT_TRUE(waitFor([&] { return x->pixel(500, 350) == QColor(Qt::green); }));
    ASSERT_TRUE(kelvo->isRunning());

    // A right click on the second monitor ends it too.
    x->movePointer(2500, 500);
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    x->click(3);
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); })) << "a right click did not end it";

    x->movePointer(600, 600);
    triggerCapture();
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    const auto first = x->overlaysOf(kelvo->pid());
    x->tapKey("Escape", /*withShift=*/true);
    // A trigger after the key: had Shift+Escape cancelled, this would start a
    // fresh capture with new overlays; the same overlays must still be up.
    triggerCapture();
    const auto after = x->overlaysOf(kelvo->pid());
    ASSERT_EQ(after.size(), 2u) << "Shift+Escape ended the capture";
    EXPECT_EQ(after[0].id, first[0].id);
    EXPECT_EQ(after[1].id, first[1].id);
    x->tapKey("Escape");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); }));
    ASSERT_TRUE(kelvo->isRunning());

    // No instance: `kelvo gui` becomes the instance and captures.
    kelvo.reset();
    ASSERT_TRUE(waitFor([] { return !kelvoOnBus(); }));
    kelvo = std::make_unique<KelvoProcess>(QStringList{QStringLiteral("gui")});
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); }, 15s)) << kelvo->errors().toStdString();
    x->tapKey("Escape");
    ASSERT_TRUE(waitFor([&] { return overlaysGone(); }));
    EXPECT_TRUE(kelvo->isRunning());
}

TEST_F(CaptureOverlay, FreezesAtScaleTwo)
{
    SolidWindow red(*x, QRect(300, 200, 400, 300), Qt::red, QStringLiteral("red"));
    ASSERT_TRUE(waitFor([&] { return x->pixel(500, 350) == QColor(Qt::red); }));
    QProcessEnvironment env;
    env.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    startKelvo(env);
    x->movePointer(100, 900);
    const QImage before = x->grabRoot();
    triggerCapture();
    // The overlays still cover each monitor's device pixels exactly, and
    // show the frozen screen at full resolution, not a blurred half.
    ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
    red.setColor(Qt::green);
    EXPECT_TRUE(waitFor([&] { return x->grabRoot() == before; }));
    x->tapKey("Escape");
    EXPECT_TRUE(waitFor([&] { return overlaysGone(); }));
}
