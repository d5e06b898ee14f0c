// SPDX-License-Identifier: GPL-3.0-or-later
// The wheel over the picture: the steps and bounds of a tool's size, a
// text's point size, a note's number and a stroke's opacity; what a tick
// is taken to be over; a touch pad's gesture kept to its first direction;
// and the history's changes that are no undo step of their own.
#include "annotation/logic/StrokeState.h"
#include "toolbar/logic/SettingsBox.h"
#include "toolbar/logic/WheelAdjust.h"
#include "toolbar/logic/WheelSteps.h"

#include <gtest/gtest.h>

using namespace toolbar;
using overlay::PointerRole;

namespace {

constexpr double kUp = 120;    // a notch away from the user
constexpr double kDown = -120; // a notch towards the user

WheelTick notch(double deltaY)
{
    WheelTick tick;
    tick.deltaY = deltaY;
    return tick;
}

WheelTick pad(double deltaX, double deltaY, bool began = false)
{
    WheelTick tick;
    tick.deltaX = deltaX;
    tick.deltaY = deltaY;
    tick.inGesture = true;
    tick.gestureBegan = began;
    return tick;
}

// A tool in hand over free space in the selection.
WheelScene freeSpace(const QString& tool, int size)
{
    WheelScene scene;
    scene.selectFunction = tool;
    scene.pointerRole = PointerRole::ToolCrosshair;
    scene.size = size;
    return scene;
}

// The open hand over the active stroke.
WheelScene onActiveStroke(std::optional<double> alpha, int type = 0)
{
    WheelScene scene = freeSpace(QStringLiteral("square"), 3);
    scene.pointerRole = PointerRole::OverStroke;
    scene.strokeType = type;
    scene.colorAlpha = alpha;
    scene.strokeUnderPointer = [] { return true; };
    return scene;
}

// Turns the wheel `times` over free space from `size` and gives where it
// stops.
int wheelFrom(const QString& tool, int size, double delta, int times)
{
    WheelAdjust wheel;
    for (int i = 0; i < times; ++i) {
        const WheelOutcome outcome = wheel.scrollWheel(notch(delta), freeSpace(tool, size));
        if (outcome.change == WheelChange::Size)
            size = outcome.size;
    }
    return size;
}

annotation::Stroke square(int list, double x1)
{
    annotation::Stroke s;
    s.type = 0;
    s.list = list;
    s.color = Qt::red;
    s.size = 3;
    s.X1 = x1;
    s.Y1 = 10;
    s.X2 = x1 + 50;
    s.Y2 = 60;
    return s;
}

} // namespace

TEST(WheelSteps, sizesStopAtTheirToolsBoundsInOrder)
{
    using wheel::steppedSize;
    // Shapes, arrows and the highlight stop at 40; lines and the pencil at 100.
    EXPECT_EQ(steppedSize(u"square", 40, kUp), std::nullopt);
    EXPECT_EQ(steppedSize(u"square", 39, kUp), 40);
    EXPECT_EQ(steppedSize(u"arrow", 40, kUp), std::nullopt);
    EXPECT_EQ(steppedSize(u"highlight", 40, kUp), std::nullopt);
    EXPECT_EQ(wheelFrom(QStringLiteral("line"), 40, kUp, 70), 100);
    EXPECT_EQ(wheelFrom(QStringLiteral("pencilPen"), 99, kUp, 5), 100);
    // The mosaic's blocks stop at 10.
    EXPECT_EQ(steppedSize(u"mosaic", 10, kUp), std::nullopt);
    EXPECT_EQ(steppedSize(u"mosaic", 9, kUp), 10);
    // Nothing goes below 1; a size already past a bound can still come down.
    EXPECT_EQ(steppedSize(u"square", 1, kDown), std::nullopt);
    EXPECT_EQ(steppedSize(u"square", 60, kDown), std::nullopt);
    EXPECT_EQ(steppedSize(u"line", 60, kDown), 59);
    EXPECT_EQ(steppedSize(u"mosaic", 20, kDown), std::nullopt);
    // One step per tick, however far the wheel turned; no turn, no step.
    EXPECT_EQ(steppedSize(u"square", 3, 960), 4);
    EXPECT_EQ(steppedSize(u"square", 3, -0.5), 2);
    EXPECT_EQ(steppedSize(u"square", 3, 0), std::nullopt);
}

TEST(WheelSteps, textSizesNotesAndOpacityKeepToTheirTables)
{
    // The text sizes walk the menu's eleven rows and stop at both ends.
    EXPECT_EQ(wheel::steppedTextSize(72, kUp), std::nullopt);
    EXPECT_EQ(wheel::steppedTextSize(72, kDown), 64);
    EXPECT_EQ(wheel::steppedTextSize(14, kUp), 18);
    EXPECT_EQ(wheel::steppedTextSize(10, kDown), std::nullopt);
    // A size the menu lacks counts as its first row.
    EXPECT_EQ(wheel::steppedTextSize(15, kUp), 11);
    EXPECT_EQ(wheel::steppedTextSize(15, kDown), std::nullopt);
    EXPECT_EQ(wheel::textSizeRow(48), 8);

    // A note's number never goes below 1.
    EXPECT_EQ(wheel::steppedSerialNumber(3, kDown), 2);
    EXPECT_EQ(wheel::steppedSerialNumber(1, kDown), 1);
    EXPECT_EQ(wheel::steppedSerialNumber(1, kUp), 2);

    // Opacity moves by 0.05 and may reach 0 and 1 but not pass them.
    const std::optional<double> full = wheel::steppedAlpha(0.95, kUp);
    ASSERT_TRUE(full.has_value());
    EXPECT_EQ(wheel::alphaText(*full), QStringLiteral("1.00"));
    EXPECT_EQ(wheel::alphaPercent(*full), QStringLiteral("100"));
    EXPECT_EQ(wheel::steppedAlpha(1.0, kUp), std::nullopt);
    const std::optional<double> none = wheel::steppedAlpha(0.05, kDown);
    ASSERT_TRUE(none.has_value());
    EXPECT_EQ(wheel::alphaText(*none), QStringLiteral("0.00"));
    EXPECT_EQ(wheel::steppedAlpha(0.0, kDown), std::nullopt);
    EXPECT_EQ(wheel::alphaText(*wheel::steppedAlpha(0.85, kDown)), QStringLiteral("0.80"));
    EXPECT_EQ(wheel::alphaPercent(0.85), QStringLiteral("85"));

    // The highlight's size reads in per cent: 40 is the whole 100%.
    EXPECT_EQ(displaySize(u"highlight", 40), QStringLiteral("100"));
    EXPECT_EQ(displaySize(u"highlight", 5), QStringLiteral("12"));
    EXPECT_EQ(displaySize(u"highlight", 7), QStringLiteral("18"));
    EXPECT_EQ(displaySizeUnit(u"highlight"), QStringLiteral("%"));
    EXPECT_EQ(displaySize(u"square", 17), QStringLiteral("17"));
}

TEST(WheelAdjust, aMouseWheelStepsTheToolInHandOnlyOverThePicture)
{
    WheelAdjust wheel;
    // No tool, no wheel: the tick is not even taken.
    WheelOutcome outcome = wheel.scrollWheel(notch(kUp), freeSpace(QString(), 3));
    EXPECT_FALSE(outcome.accepted);
    EXPECT_EQ(outcome.change, WheelChange::None);

    outcome = wheel.scrollWheel(notch(kUp), freeSpace(QStringLiteral("square"), 3));
    EXPECT_TRUE(outcome.accepted);
    EXPECT_EQ(outcome.change, WheelChange::Size);
    EXPECT_EQ(outcome.size, 4);
    EXPECT_FALSE(outcome.openAlphaBox);
    outcome = wheel.scrollWheel(notch(kDown), freeSpace(QStringLiteral("square"), 3));
    EXPECT_EQ(outcome.size, 2);

    // Over the bar (the arrow) or a handle the tick is taken but changes nothing.
    for (PointerRole role : {PointerRole::Arrow, PointerRole::Resize, PointerRole::TextIBeam}) {
        WheelScene scene = freeSpace(QStringLiteral("square"), 3);
        scene.pointerRole = role;
        outcome = wheel.scrollWheel(notch(kUp), scene);
        EXPECT_TRUE(outcome.accepted);
        EXPECT_EQ(outcome.change, WheelChange::None);
    }
    // A sideways tilt of the wheel changes nothing.
    WheelTick tilt;
    tilt.deltaX = kUp;
    EXPECT_EQ(wheel.scrollWheel(tilt, freeSpace(QStringLiteral("square"), 3)).change,
              WheelChange::None);
    // The text tools walk their size menu, and a note's circle its number.
    outcome = wheel.scrollWheel(notch(kUp), freeSpace(QStringLiteral("text"), 15));
    EXPECT_EQ(outcome.change, WheelChange::TextSize);
    EXPECT_EQ(outcome.size, 11);
    WheelScene note = freeSpace(QStringLiteral("note"), 14);
    note.pointerRole = PointerRole::Arrow;
    note.strokeType = 7;
    note.onCycleOfNote = true;
    note.serialNumber = 1;
    outcome = wheel.scrollWheel(notch(kDown), note);
    EXPECT_EQ(outcome.change, WheelChange::SerialNumber);
    EXPECT_EQ(outcome.serialNumber, 1);
}

TEST(WheelAdjust, overTheActiveStrokeTheWheelStepsItsOpacityUnderAnOpenBox)
{
    WheelAdjust wheel;
    // The first tick opens the box with the stroke's opacity, then steps it.
    WheelOutcome outcome = wheel.scrollWheel(notch(kDown), onActiveStroke(std::nullopt));
    EXPECT_EQ(outcome.openAlphaBox, QStringLiteral("100"));
    EXPECT_EQ(outcome.change, WheelChange::Opacity);
    EXPECT_EQ(outcome.colorAlphaText, QStringLiteral("0.95"));
    EXPECT_EQ(outcome.alphaPercent, QStringLiteral("95"));
    EXPECT_TRUE(wheel.boxOfColorAlphaShown());

    // While the box is open the answer of that first tick holds: the stroke
    // is not asked again.
    int asked = 0;
    WheelScene scene = onActiveStroke(0.95);
    scene.strokeUnderPointer = [&asked] {
        ++asked;
        return false;
    };
    outcome = wheel.scrollWheel(notch(kDown), scene);
    EXPECT_EQ(asked, 0);
    EXPECT_FALSE(outcome.openAlphaBox);
    EXPECT_EQ(outcome.colorAlphaText, QStringLiteral("0.90"));
    // At full opacity a turn up opens nothing new and changes nothing.
    outcome = wheel.scrollWheel(notch(kUp), onActiveStroke(1.0));
    EXPECT_EQ(outcome.change, WheelChange::None);

    // A move closes the box; the next tick asks afresh, and off the active
    // stroke the open hand's wheel steps the size instead.
    EXPECT_TRUE(wheel.pointerMovedOrPressed());
    EXPECT_FALSE(wheel.pointerMovedOrPressed());
    outcome = wheel.scrollWheel(notch(kUp), scene);
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(outcome.change, WheelChange::Size);
    EXPECT_FALSE(wheel.boxOfColorAlphaShown());

    // Over a mosaic, text or note the open hand is not the picture: nothing.
    for (int type : {5, 6, 7}) {
        wheel.pointerMovedOrPressed();
        outcome = wheel.scrollWheel(notch(kDown), onActiveStroke(0.5, type));
        EXPECT_EQ(outcome.change, WheelChange::None) << type;
        EXPECT_FALSE(outcome.openAlphaBox) << type;
    }
    // The box opens with the stroke's own opacity.
    wheel.pointerMovedOrPressed();
    outcome = wheel.scrollWheel(notch(kUp), onActiveStroke(0.85, 8));
    EXPECT_EQ(outcome.openAlphaBox, QStringLiteral("85"));
    EXPECT_EQ(outcome.alphaPercent, QStringLiteral("90"));
}

TEST(WheelAdjust, aTouchPadGestureKeepsTheDirectionItStartedIn)
{
    WheelAdjust wheel;
    const WheelScene scene = freeSpace(QStringLiteral("square"), 10);
    // Started sideways: nothing until the fingers lift and start again,
    // however much they then move up and down.
    EXPECT_EQ(wheel.scrollWheel(pad(4, 0, true), scene).change, WheelChange::None);
    EXPECT_EQ(wheel.scrollWheel(pad(0, 6), scene).change, WheelChange::None);
    EXPECT_EQ(wheel.scrollWheel(pad(0, -6), scene).change, WheelChange::None);
    EXPECT_EQ(wheel.scrollWheel(pad(1, 9), scene).change, WheelChange::None);
    EXPECT_EQ(wheel.scrollWheel(pad(0, 9), scene).change, WheelChange::None); // momentum
    EXPECT_EQ(wheel.scrollWheel(pad(0, 0), scene).change, WheelChange::None); // the end

    // Started up and down: one step per tick, even with sideways drift later.
    WheelOutcome outcome = wheel.scrollWheel(pad(0, 3, true), scene);
    EXPECT_EQ(wheel.scrollWheelType(), QStringLiteral("upDownScroll"));
    EXPECT_EQ(outcome.size, 11);
    EXPECT_EQ(wheel.scrollWheel(pad(2, -40), scene).size, 9);
    EXPECT_EQ(wheel.scrollWheel(pad(2, 0), scene).change, WheelChange::None);

    // A first tick without movement decides nothing; the next one does.
    EXPECT_EQ(wheel.scrollWheel(pad(0, 0, true), scene).change, WheelChange::None);
    EXPECT_EQ(wheel.scrollWheelType(), QString());
    EXPECT_EQ(wheel.scrollWheel(pad(0, 5), scene).size, 11);
    // A mouse wheel in between is no gesture and is not held to it.
    EXPECT_EQ(wheel.scrollWheel(pad(7, 0, true), scene).change, WheelChange::None);
    EXPECT_EQ(wheel.scrollWheel(notch(kUp), scene).size, 11);
}

TEST(WheelAdjust, qtsWheelEventsTellANotchedWheelFromATouchPadsGesture)
{
    // A notch: the angle alone, no phase.
    overlay::ClipWheelEvent event;
    event.angleDelta = QPointF(0, -120);
    WheelTick tick = wheelTickOf(event, false);
    EXPECT_FALSE(tick.inGesture);
    EXPECT_FALSE(tick.gestureBegan);
    EXPECT_EQ(tick.deltaY, -120);

    // A touch pad with phases: its distance, and a new gesture only at the
    // begin phase; momentum goes on with the gesture.
    event.pixelDelta = QPointF(3, 0);
    event.angleDelta = QPointF(24, 0);
    event.phase = Qt::ScrollBegin;
    tick = wheelTickOf(event, true);
    EXPECT_TRUE(tick.inGesture);
    EXPECT_TRUE(tick.gestureBegan);
    EXPECT_EQ(tick.deltaX, 3);
    EXPECT_EQ(tick.deltaY, 0);
    for (Qt::ScrollPhase phase : {Qt::ScrollUpdate, Qt::ScrollMomentum, Qt::ScrollEnd}) {
        event.phase = phase;
        tick = wheelTickOf(event, false);
        EXPECT_TRUE(tick.inGesture) << phase;
        EXPECT_FALSE(tick.gestureBegan) << phase;
    }

    // A touch pad without phases: a pause as long as the gesture's timer
    // begins the next gesture, so a sideways start does not hold for good.
    event.phase = Qt::NoScrollPhase;
    EXPECT_FALSE(wheelTickOf(event, true).gestureBegan);
    EXPECT_TRUE(wheelTickOf(event, false).gestureBegan);
    WheelAdjust wheel;
    const WheelScene scene = freeSpace(QStringLiteral("square"), 10);
    EXPECT_EQ(wheel.scrollWheel(wheelTickOf(event, false), scene).change, WheelChange::None);
    event.pixelDelta = QPointF(0, 4);
    EXPECT_EQ(wheel.scrollWheel(wheelTickOf(event, true), scene).change, WheelChange::None);
    EXPECT_EQ(wheel.scrollWheel(wheelTickOf(event, false), scene).size, 11);
}

TEST(WheelHistory, aWheelChangeReplacesTheActiveStrokesSnapshotAndWithoutOneLeavesAnEmptyStep)
{
    annotation::StrokeState state;
    // A stroke drawn, then moved: two snapshots of one identity.
    state.dicOfCurrentStroke = square(1, 10);
    state.commit();
    state.dicOfCurrentStroke = square(1, 30);
    state.commit();
    state.amendCurrent([](annotation::Stroke& s) { s.size = 6; });
    state.amendCurrent([](annotation::Stroke& s) { s.size = 7; });
    // No step of its own: the moved snapshot was replaced each time.
    ASSERT_EQ(state.arrayOfStrokes().size(), 2U);
    EXPECT_EQ(state.arrayOfStrokes().back().size, 7);
    EXPECT_EQ(state.arrayOfStrokes().back().X1, 30);
    EXPECT_EQ(state.dicOfCurrentStroke->size, 7);
    // Undo uncovers the stroke as it was before the move, at its old size.
    state.undoDraw();
    ASSERT_EQ(state.currentStrokes(false).size(), 1U);
    EXPECT_EQ(state.currentStrokes(false).front(), square(1, 10));
    state.redoDraw();

    // With no active stroke a run of turns leaves one undo step that no
    // reader of the strokes sees.
    const std::vector<annotation::Stroke> before = state.currentStrokes(false);
    state.dicOfCurrentStroke.reset();
    state.amendCurrent([](annotation::Stroke& s) { s.size = 8; });
    state.amendCurrent([](annotation::Stroke& s) { s.size = 9; });
    EXPECT_EQ(state.arrayOfStrokes().size(), 3U);
    EXPECT_FALSE(state.dicOfCurrentStroke.has_value());
    EXPECT_EQ(state.currentStrokes(false), before);
    EXPECT_EQ(state.currentStrokes(true), before);
    // Undoing it shows nothing different; the next undo takes the stroke's move.
    EXPECT_TRUE(state.undoDraw().undone);
    EXPECT_EQ(state.currentStrokes(false), before);
    EXPECT_TRUE(state.undoDraw().undone);
    EXPECT_EQ(state.currentStrokes(false).front().X1, 10);
    state.redoDraw();
    state.redoDraw();
    // A new stroke ends the run: the next turn without one is a new step.
    state.dicOfCurrentStroke = square(2, 100);
    state.commit();
    state.dicOfCurrentStroke.reset();
    state.amendCurrent([](annotation::Stroke& s) { s.size = 10; });
    EXPECT_EQ(state.arrayOfStrokes().size(), 5U);
    EXPECT_EQ(state.currentStrokes(false).size(), 2U);
    EXPECT_EQ(state.getListNumberFromArrayOfStrokes(0), 2);
}
