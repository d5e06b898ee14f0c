// SPDX-License-Identifier: GPL-3.0-or-later
// The tool bar's state: where it stands for a selection at each edge of a
// screen, which slot lies under a point, the settings box under a tool,
// the buttons' looks as tools are chosen, the tips that open and close over
// the buttons, and the bar's move away from the screen's bottom, on the
// clock.
#include "toolbar/logic/ToolBarState.h"
#include "support/SteppedClock.h"
#include "toolbar/logic/ButtonBox.h"
#include "toolbar/logic/SettingsBox.h"
#include "toolbar/logic/ToolBarHover.h"
#include "toolbar/logic/ToolBarMover.h"

#include <gtest/gtest.h>

using namespace toolbar;
using namespace std::chrono_literals;

namespace {

// Where the bar's origin goes for a crop frame (window points, y up).
QPointF origin(const QRectF& frame, qreal width = 1920)
{
    return placeBar(frame, width).buttonBoxOrigin;
}

} // namespace

TEST(ButtonBox, standsUnderTheSelectionOrInsideItAtTheBottomAndStaysOnTheScreen)
{
    // Under: centred on the selection's middle less 262, 50 below its y,
    // both cut to whole numbers.
    BarPlacement under = placeBar(QRectF(300.4, 200.7, 400, 300), 1920);
    EXPECT_EQ(under.buttonBoxOrigin, QPointF(238, 150));
    EXPECT_FALSE(under.buttonBoxNeedHidden);
    // At y 93 exactly it goes inside at 53; a half point higher it is under.
    const BarPlacement at93 = placeBar(QRectF(500, 93, 400, 300), 1920);
    EXPECT_EQ(at93.buttonBoxOrigin.y(), 53);
    EXPECT_TRUE(at93.buttonBoxNeedHidden);
    EXPECT_EQ(origin(QRectF(500, 93.5, 400, 300)).y(), 43);
    // The bottom edge and the whole screen: inside, near the bottom.
    EXPECT_EQ(origin(QRectF(500, 0, 400, 300)), QPointF(438, 53));
    const BarPlacement whole = placeBar(QRectF(-6, -6, 1932, 1092), 1920);
    EXPECT_EQ(whole.buttonBoxOrigin, QPointF(698, 53));
    EXPECT_TRUE(whole.buttonBoxNeedHidden);
    // The top edge changes nothing: the bar stays under.
    EXPECT_EQ(origin(QRectF(500, 780, 400, 300)), QPointF(438, 730));
    // The left edge holds it at 0, the right at the width less 525.
    EXPECT_EQ(origin(QRectF(0, 500, 100, 100)).x(), 0);
    EXPECT_EQ(origin(QRectF(1800, 500, 120, 100)).x(), 1920 - 525);
    EXPECT_EQ(origin(QRectF(1600, 500, 100, 100)).x(), 1388); // 1650 - 262: it fits
}

TEST(ButtonBox, onTheSecondMonitorItMeasuresThatScreensPoints)
{
    // DUMMY1 at scale 2: 640 by 512 points, window points of its own.
    EXPECT_EQ(origin(QRectF(100, 200, 300, 200), 640), QPointF(0, 150));
    EXPECT_EQ(origin(QRectF(400, 200, 200, 200), 640), QPointF(115, 150));
    EXPECT_EQ(origin(QRectF(300, 20, 200, 400), 640), QPointF(115, 53));
    // A screen narrower than the bar leaves it sticking out on the left.
    EXPECT_EQ(origin(QRectF(100, 200, 200, 200), 400).x(), -125);

    // The same in top-left points: a selection's band is added and the
    // screen's height flips it. 300,200 480x360 on 1920x1080: the frame is
    // at y-up 514, the bar 50 lower, 16 under the selection's bottom.
    const QRectF box = placeButtonBox(QRectF(300, 200, 480, 360), QSizeF(1920, 1080));
    EXPECT_EQ(box, QRectF(278, 576, 525, 40));
    const QRectF second = placeButtonBox(QRectF(300, 100, 300, 300), QSizeF(640, 512));
    EXPECT_EQ(second, QRectF(115, 416, 525, 40));
    // Buttons at the pitch of 35, centred in their slots.
    EXPECT_EQ(buttonCentre(box, QStringLiteral("square")), QPointF(278 + 17.5, 596));
    EXPECT_EQ(buttonCentre(box, QStringLiteral("copyToPaste")), QPointF(278 + 507.5, 596));
}

TEST(ButtonBox, slotsRunInTheirOrderAndBoundariesFindNone)
{
    EXPECT_EQ(buttonNames().size(), kSlotCount);
    EXPECT_EQ(buttonNames().at(kUndoSlot), QStringLiteral("undo"));
    EXPECT_EQ(buttonNames().at(kScrollSlot), QStringLiteral("scrollScreenshot"));
    EXPECT_EQ(buttonNames().mid(9),
              (QStringList{"undo", "map", "cancel", "scrollScreenshot", "save", "copyToPaste"}));
    EXPECT_EQ(toolSlot(u"highlight"), 8);
    EXPECT_EQ(toolSlot(u"undo"), -1);
    EXPECT_EQ(shortcutKeyOf(0), QLatin1StringView("squareShortcut"));
    EXPECT_EQ(shortcutKeyOf(kUndoSlot), QLatin1StringView());
    EXPECT_EQ(shortcutKeyOf(10), QLatin1StringView()); // the pin has no menu

    // The tip's test: open bounds, single precision.
    EXPECT_EQ(slotUnder(117.5, 100), 0);
    EXPECT_EQ(slotUnder(135, 100), -1);
    EXPECT_EQ(slotUnder(135.01, 100), 1);
    EXPECT_EQ(slotUnder(624.9, 100), 14);
    EXPECT_EQ(slotUnder(625, 100), -1);
    // The hover's test: the buttons' frames, with gaps between them.
    EXPECT_EQ(buttonUnder(QPointF(2, 20)), -1);
    EXPECT_EQ(buttonUnder(QPointF(3, 20)), 0);
    EXPECT_EQ(buttonUnder(QPointF(36, 20)), -1);
    EXPECT_EQ(buttonUnder(QPointF(40, 20)), 1);
    EXPECT_EQ(buttonUnder(QPointF(40, 37)), -1);
}

TEST(ButtonBox, settingsBoxHangsUnderItsToolAndTipsStayOnTheScreen)
{
    const QPointF o(100, 200);
    const std::optional<ColorBoxPlacement> line = placeColorBox(u"line", o);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->sanjiao, QPointF(177, 185));
    EXPECT_EQ(line->colorBox, QRectF(110, 150, 155, 45));
    EXPECT_EQ(line->shadow2, QPointF(103, 137));
    // The pointer's three groups of steps, and the box's first two held at 0.
    EXPECT_EQ(placeColorBox(u"square", o)->colorBox.x(), 100);
    EXPECT_EQ(placeColorBox(u"ellipse", o)->colorBox.x(), 100);
    EXPECT_EQ(placeColorBox(u"ellipse", o)->sanjiao.x(), 145);
    EXPECT_EQ(placeColorBox(u"text", o)->sanjiao.x(), 315);
    EXPECT_EQ(placeColorBox(u"highlight", o)->sanjiao.x(), 385);
    EXPECT_EQ(placeColorBox(u"highlight", o)->colorBox.x(), 320);
    EXPECT_FALSE(placeColorBox(u"undo", o));
    EXPECT_FALSE(placeColorBox(u"", o));

    // Centred over the slot, the bottom on the bar's top.
    EXPECT_EQ(tipOrigin(2, o, 100, 1920, false), QPointF(2 * 35 + 100 + 17 - 50, 240));
    // The last button at the right edge: pushed back onto the screen.
    EXPECT_EQ(tipOrigin(14, QPointF(1395, 10), 120, 1920, false), QPointF(1800, 50));
    EXPECT_EQ(tipOrigin(0, QPointF(0, 10), 120, 1920, false).x(), 0);
    // Scrolling: slot 11 is the bar's first button, its tip a slot to the right.
    EXPECT_EQ(tipOrigin(11, o, 100, 1920, true).x(), 35 + 100 + 17 - 50);
}

TEST(SettingsBox, dotsSizesAndUnitsFollowTheTool)
{
    EXPECT_EQ(sizeDots(u"mosaic"), (std::array<int, 3>{3, 6, 10}));
    EXPECT_EQ(sizeDots(u"highlight"), (std::array<int, 3>{10, 20, 30}));
    EXPECT_EQ(sizeDots(u"arrow"), (std::array<int, 3>{3, 10, 16}));
    EXPECT_EQ(markedDot(u"square", 3), 0);
    EXPECT_EQ(markedDot(u"line", 16), 2);
    EXPECT_EQ(markedDot(u"arrow", 12), -1);
    EXPECT_EQ(markedDot(u"text", 3), -1);
    EXPECT_FALSE(showsSizeDots(u"note"));
    EXPECT_EQ(markedDotColor(u"square", Qt::green), QColor(Qt::green));
    EXPECT_NE(markedDotColor(u"mosaic", Qt::green), QColor(Qt::green));
    EXPECT_EQ(displaySize(u"highlight", 40) + displaySizeUnit(u"highlight"), "100%");
    EXPECT_EQ(displaySize(u"square", 3) + displaySizeUnit(u"square"), "3Pt");
    EXPECT_EQ(displaySize(u"text", 18), QString());
    EXPECT_EQ(swatchColors()[0], QColor(Qt::red));
}

TEST(ToolBarState, choosingToolsGivesTheButtonsTheirLooks)
{
    ToolBarState s;
    EXPECT_EQ(s.look(0, false), ButtonLook::Normal);
    // Undo acts only when there is something to undo.
    EXPECT_EQ(s.look(kUndoSlot, false), ButtonLook::Disabled);
    EXPECT_EQ(s.look(kUndoSlot, true), ButtonLook::Normal);
    EXPECT_EQ(s.look(13, false), ButtonLook::Normal);

    s.adjust(0);
    EXPECT_EQ(s.selectFunction, "square");
    EXPECT_EQ(s.numberOfSelectFunction, 0);
    EXPECT_TRUE(s.toolHaveSelected);
    EXPECT_EQ(s.look(0, false), ButtonLook::Selected);
    EXPECT_FALSE(s.clickChanges(u"square")); // a second click leaves it on
    EXPECT_TRUE(s.clickChanges(u"arrow"));
    ASSERT_TRUE(s.colorBox());
    EXPECT_EQ(s.colorBox()->colorBox.x(), 0);

    s.adjust(3);
    EXPECT_EQ(s.look(0, false), ButtonLook::Normal);
    EXPECT_EQ(s.look(3, false), ButtonLook::Selected);
    EXPECT_EQ(s.oldSelectFunction, "arrow");

    // The pencil, chosen again while it is the tool left behind, goes off.
    s.adjust(4);
    EXPECT_EQ(s.look(4, false), ButtonLook::Selected);
    s.adjust(4);
    EXPECT_EQ(s.look(4, false), ButtonLook::Normal);
    EXPECT_EQ(s.selectFunction, "pencilPen");
    // Any other tool chosen again stays on.
    s.adjust(1);
    s.adjust(1);
    EXPECT_EQ(s.look(1, false), ButtonLook::Selected);

    // No tool: the one left behind goes off, and there is no settings box.
    s.adjust(-1);
    EXPECT_EQ(s.look(1, false), ButtonLook::Normal);
    EXPECT_EQ(s.numberOfSelectFunction, -1);
    EXPECT_FALSE(s.colorBox());
    EXPECT_FALSE(s.drawingToolChosen());
    s.adjust(kUndoSlot); // undo is no tool
    EXPECT_EQ(s.selectFunction, QString());

    // A new layout forgets the tool left behind, so the tool is chosen again.
    s.adjust(2);
    s.resetButtonBox(placeBar(QRectF(500, 93, 400, 300), 1920));
    EXPECT_EQ(s.oldSelectFunction, QString());
    EXPECT_TRUE(s.clickChanges(u"line"));
    EXPECT_TRUE(s.buttonBoxNeedHidden);

    s.scrollScreenshotEnabled = false;
    EXPECT_EQ(s.look(kScrollSlot, true), ButtonLook::Disabled);
}

TEST(ToolBarState, aShortCutMenuRefusesTheKeysOtherButtonsHold)
{
    const QVariantMap table{{"squareShortcut", "1"},
                            {"saveShortcut", QString(QChar(kSpaceKeyText))},
                            {"copyToPasteShortcut", QString(QChar(kReturnKeyText))},
                            {"scrollScreenshotShortcut", "S"}};
    const auto item = [](const std::vector<MenuItem>& items, const QString& title) {
        for (const MenuItem& i : items) {
            if (i.title == title)
                return i;
        }
        return MenuItem{};
    };
    const std::vector<MenuItem> save = shortcutMenu(13, table);
    EXPECT_FALSE(item(save, "1").enabled);
    EXPECT_FALSE(item(save, "S").enabled);
    EXPECT_TRUE(item(save, "2").enabled);
    const MenuItem own = item(save, QString(QChar(kSpaceKeyText)));
    EXPECT_TRUE(own.enabled);
    EXPECT_TRUE(own.current);
    EXPECT_TRUE(item(shortcutMenu(0, table), "1").current);
}

namespace {

class RecordedTips final : public TipBoxes
{
public:
    QSizeF tipSize(int) override { return {120, 50}; }
    void showTip(int slot, QPointF origin) override
    {
        shown = slot;
        at = origin;
        alphas.clear();
        ++opens;
    }
    void setTipAlpha(int, double alpha) override { alphas.push_back(alpha); }
    void hideTip(int slot) override
    {
        if (slot == shown)
            shown = -1;
    }

    int shown = -1;
    int opens = 0;
    QPointF at;
    std::vector<double> alphas;
};

class Hover : public ::testing::Test
{
protected:
    void SetUp() override
    {
        state.resetButtonBox(placeBar(QRectF(400, 300, 600, 300), 1920)); // origin 438, 250
        context.clipToolbarWindowOpened = true;
        context.screenWidth = 1920;
    }
    // One beat of the hover: the fifth move is the one it looks at.
    void rest(QPointF p)
    {
        for (int i = 0; i < ToolBarHover::kMoveBeat; ++i)
            hover.mouseMoved(p, context);
    }
    QPointF onSlot(int slot) const
    {
        return state.buttonBoxOrigin + QPointF(slot * kSlotPitch + 17.5, 20);
    }

    ToolBarState state;
    SteppedClock clock;
    RecordedTips tips;
    ToolBarHover hover{state, clock, tips};
    HoverContext context;
};

} // namespace

TEST_F(Hover, aTipOpensWhenThePointerRestsAndFollowsItFromButtonToButton)
{
    ASSERT_EQ(state.buttonBoxOrigin, QPointF(438, 250));
    // Four moves cost nothing; the fifth finds the button.
    for (int i = 0; i < 4; ++i)
        hover.mouseMoved(onSlot(0), context);
    EXPECT_EQ(state.mouseOnWhichButtonBox, -1);
    EXPECT_FALSE(state.mouseOnButton);
    EXPECT_TRUE(hover.mouseMoved(onSlot(0), context));
    EXPECT_EQ(state.mouseOnWhichButtonBox, 0);
    EXPECT_TRUE(state.mouseOnButton);

    // Moving on restarts the wait.
    clock.advance(400ms);
    rest(onSlot(0) + QPointF(1, 0));
    clock.advance(499ms);
    EXPECT_EQ(tips.shown, -1);
    clock.advance(1ms);
    EXPECT_EQ(tips.shown, 0);
    EXPECT_TRUE(state.tipsBoxIsOpening);
    EXPECT_EQ(tips.at, QPointF(438 + 17 - 60, 290));

    // An open tip follows to the next button at once.
    rest(onSlot(3));
    EXPECT_EQ(tips.shown, 3);
    EXPECT_EQ(state.mouseOnWhichButtonBox, 3);
    // Six seconds on it fades: 1.0 down by 0.1 every 50 ms, hidden below
    // 0.1, which the sum of tenths passes only after ten steps.
    clock.advance(5999ms);
    EXPECT_TRUE(state.tipsBoxIsOpening);
    clock.advance(1ms);
    EXPECT_FALSE(state.tipsBoxIsOpening);
    EXPECT_EQ(tips.shown, 3);
    clock.advance(400ms);
    EXPECT_EQ(tips.alphas.size(), 8U);
    clock.advance(50ms);
    EXPECT_EQ(tips.shown, 3);
    clock.advance(50ms);
    ASSERT_EQ(tips.alphas.size(), 10U);
    EXPECT_DOUBLE_EQ(tips.alphas.front(), 1.0);
    EXPECT_NEAR(tips.alphas.back(), 0.1, 1e-9);
    EXPECT_EQ(tips.shown, -1);
}

TEST_F(Hover, theTipStaysWhileThePointerIsInItAndGoesWhenItLeaves)
{
    context.delaySeconds = 0.2;
    rest(onSlot(5));
    clock.advance(200ms);
    ASSERT_EQ(tips.shown, 5);
    // Into the tip: its closing stops.
    rest(tips.at + QPointF(10, 10));
    EXPECT_FALSE(state.mouseOnButton);
    EXPECT_EQ(state.mouseOnWhichButtonBox, -1);
    clock.advance(10s);
    EXPECT_EQ(tips.shown, 5);
    EXPECT_TRUE(state.tipsBoxIsOpening);
    // After a menu was pulled down the pointer may wander off.
    state.popupButtonHaveOpened = true;
    rest(QPointF(5, 5));
    EXPECT_TRUE(state.tipsBoxIsOpening);
    state.popupButtonHaveOpened = false;
    rest(QPointF(5, 5));
    EXPECT_FALSE(state.tipsBoxIsOpening);
    clock.advance(1s);
    EXPECT_EQ(tips.shown, -1);
}

TEST_F(Hover, boundariesClicksAndTheClosedWindowOpenNoTip)
{
    // Exactly between two slots: no tip.
    rest(QPointF(438 + 35, 270));
    EXPECT_EQ(state.mouseOnWhichButtonBox, -1); // between the buttons' frames too
    EXPECT_TRUE(state.mouseOnButton);
    clock.advance(1s);
    EXPECT_EQ(tips.opens, 0);

    // A click on a button stops the tip that was waiting.
    rest(onSlot(2));
    EXPECT_TRUE(hover.tipWaiting());
    hover.closeTipAtOnce();
    clock.advance(1s);
    EXPECT_EQ(tips.opens, 0);

    // The settings box under a tool counts as the bar for the overlay.
    state.adjust(0);
    rest(state.colorBox()->colorBox.center());
    EXPECT_TRUE(state.mouseOnButton);
    EXPECT_EQ(state.mouseOnWhichButtonBox, -1);

    // The window closed: moves are not even counted.
    context.clipToolbarWindowOpened = false;
    const int counted = state.mouseMovedTimes;
    rest(onSlot(1));
    EXPECT_EQ(state.mouseMovedTimes, counted);
    clock.advance(1s);
    EXPECT_EQ(tips.opens, 0);
    // While the bar moves away it is left alone.
    context.clipToolbarWindowOpened = true;
    state.buttonBoxIsHiddenning = true;
    rest(onSlot(1));
    clock.advance(1s);
    EXPECT_EQ(tips.opens, 0);
}

TEST_F(Hover, duringAScrollingCaptureTheFirstButtonsTipIsCancelsOneSlotRight)
{
    context.scrolling = true;
    rest(onSlot(0));
    clock.advance(500ms);
    EXPECT_EQ(tips.shown, 11);
    EXPECT_EQ(tips.at.x(), 438 + 35 + 17 - 60);
    // The window closes with the tip open: it goes, and no timer acts later.
    hover.stop();
    EXPECT_EQ(tips.shown, -1);
    clock.advance(10s);
    EXPECT_TRUE(tips.alphas.empty());
}

TEST_F(Hover, theSettingsBoxTipOpensAtItsRightEndOnARestSixTimesInAllAndGoesWithThePointer)
{
    int times = 0;
    hover.setColorTipTimes([&times] { return times; }, [&times](int t) { times = t; });
    state.adjust(0); // the rectangle's box: 438,200 155 by 45, y up
    const QPointF inBox(500, 220);

    rest(inBox);
    EXPECT_TRUE(state.mouseOnButton);
    clock.advance(499ms);
    EXPECT_EQ(tips.shown, -1);
    clock.advance(1ms);
    EXPECT_EQ(tips.shown, kColorTipSlot);
    EXPECT_EQ(tips.at, QPointF(438 + 155, 200));
    EXPECT_EQ(times, 1);
    EXPECT_TRUE(state.boxColorTipsOpening);
    EXPECT_FALSE(state.tipsBoxIsOpening);
    // Six seconds on it fades as the buttons' tips do.
    clock.advance(6000ms);
    EXPECT_FALSE(hover.colorTipShown());
    clock.advance(500ms);
    EXPECT_EQ(tips.alphas.size(), 10U);
    EXPECT_EQ(tips.shown, -1);

    // Leaving the box closes it at once, with the fade.
    state.boxColorTipsOpening = false;
    rest(inBox);
    clock.advance(500ms);
    ASSERT_EQ(tips.shown, kColorTipSlot);
    EXPECT_EQ(times, 2);
    rest(QPointF(500, 150));
    EXPECT_FALSE(state.boxColorTipsOpening);
    EXPECT_FALSE(hover.colorTipShown());
    clock.advance(500ms);
    EXPECT_EQ(tips.shown, -1);
    // A pointer that left before the rest ended opens nothing.
    rest(inBox);
    rest(QPointF(500, 150));
    clock.advance(500ms);
    EXPECT_EQ(tips.shown, -1);
    EXPECT_EQ(times, 2);

    // After the sixth showing it never opens again.
    times = 5;
    rest(inBox);
    clock.advance(500ms);
    EXPECT_EQ(tips.shown, kColorTipSlot);
    EXPECT_EQ(times, 6);
    rest(QPointF(500, 150));
    clock.advance(500ms);
    const int opens = tips.opens;
    rest(inBox);
    clock.advance(500ms);
    EXPECT_EQ(tips.opens, opens);
    EXPECT_EQ(times, 6);

    // A hidden bar takes the tip with it at once.
    times = 0;
    rest(inBox);
    clock.advance(500ms);
    ASSERT_EQ(tips.shown, kColorTipSlot);
    hover.closeTipAtOnce();
    EXPECT_EQ(tips.shown, -1);
    EXPECT_FALSE(state.boxColorTipsOpening);
}

TEST(ToolBarMover, aControlTapMovesABarInsideTheSelectionOffTheScreenAndBack)
{
    ToolBarState state;
    SteppedClock clock;
    int moves = 0;
    ToolBarMover mover(state, clock, [&] { ++moves; });
    int tipsClosed = 0;
    const auto tap = [&](Qt::KeyboardModifiers with = Qt::NoModifier) {
        const bool down = mover.flagsChanged(Qt::MetaModifier | with, false, [&] { ++tipsClosed; });
        return mover.flagsChanged(Qt::NoModifier, false, [&] { ++tipsClosed; }) || down;
    };

    // A bar under the selection stays where it is.
    state.resetButtonBox(placeBar(QRectF(400, 300, 600, 300), 1920));
    EXPECT_FALSE(tap());
    state.resetButtonBox(placeBar(QRectF(400, 20, 600, 300), 1920));
    ASSERT_EQ(state.buttonBoxOrigin.y(), 53);

    // Another modifier with it, a key between, or Control's double tap
    // saving: no move.
    EXPECT_FALSE(tap(Qt::ShiftModifier));
    mover.flagsChanged(Qt::MetaModifier, false, {});
    mover.keyDown();
    EXPECT_FALSE(mover.flagsChanged(Qt::NoModifier, false, {}));
    mover.flagsChanged(Qt::MetaModifier, true, {});
    EXPECT_FALSE(mover.flagsChanged(Qt::NoModifier, true, {}));

    // Away: 2 points every 3 ms, 46 steps, then the origin 92 lower.
    state.tipsBoxIsOpening = true;
    state.mouseOnButton = true;
    EXPECT_TRUE(tap());
    EXPECT_EQ(tipsClosed, 1);
    EXPECT_FALSE(state.tipsBoxIsOpening);
    EXPECT_TRUE(state.buttonBoxIsHiddenning);
    clock.advance(3ms);
    EXPECT_EQ(state.shownOrigin().y(), 51);
    EXPECT_FALSE(tap()); // no second move while one runs
    clock.advance(132ms);
    EXPECT_EQ(state.shownOrigin().y(), 53 - 90);
    EXPECT_TRUE(state.mouseOnButton);
    clock.advance(3ms);
    EXPECT_EQ(state.buttonBoxOrigin.y(), -39);
    EXPECT_EQ(state.shownOrigin().y(), -39);
    EXPECT_FALSE(state.buttonBoxIsHiddenning);
    EXPECT_FALSE(state.mouseOnButton);
    EXPECT_EQ(moves, 46);

    // Below 5 the next tap brings it back, without closing tips.
    EXPECT_TRUE(tap());
    clock.advance(138ms);
    EXPECT_EQ(state.buttonBoxOrigin.y(), 53);
    EXPECT_EQ(tipsClosed, 1);

    // The window closes in the middle of a move: it stops there.
    EXPECT_TRUE(tap());
    clock.advance(30ms);
    mover.stop();
    clock.advance(1s);
    EXPECT_EQ(state.buttonBoxOrigin.y(), 53);
    EXPECT_FALSE(state.buttonBoxIsHiddenning);
    EXPECT_EQ(state.barShift, 0);
}
