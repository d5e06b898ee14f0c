// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/ClipKeyHandler.h"
#include "capture/logic/ClipStateMachine.h"
#include "capture/logic/ModifierDoubleTap.h"
#include "capture/logic/OverlayTips.h"
#include "capture/logic/SelectionGeometry.h"
#include "unit/capture/CaptureTestSupport.h"
#include "unit/capture/FakeClipViewHost.h"

#include <gtest/gtest.h>

#include <memory>

namespace capture {
namespace {

using testing::Cmd;
using testing::FakeClipViewHost;
using testing::MouseEventPhase;

const QString kCancel = QStringLiteral("cancelScreenShot");
const QString kStartAnnotation = QStringLiteral("startAnnotation");
const QString kHidden = QStringLiteral("hiddenButtonOfClipToolbarWindow");
const QString kUnhidden = QStringLiteral("unhiddenButtonOfClipToolbarWindow");
const QString kPreRect = QStringLiteral("preRectOfScreenShots");

// A window on the primary screen, overlay-local.
const QRectF kWindow{100, 200, 400, 300};
const QRectF kPrimary{0, 0, 1920, 1080};

// One overlay's state machine with its recording host; the primary screen
// (1920 by 1080) unless told otherwise, with a second screen to its right.
class ClipStatesTest : public ::testing::Test
{
protected:
    ClipStatesTest() { open(0); }

    void open(int screen)
    {
        m_machine =
            std::make_unique<ClipStateMachine>(m_state, m_host, testing::twoScreens(), screen);
        m_keys = std::make_unique<ClipKeyHandler>(*m_machine);
        const QSizeF size = testing::twoScreens().screen(screen).frame.size();
        m_machine->showClipViewWithFrame(QRectF(QPointF(0, 0), size), false, false);
        m_host.underMouse = screen;
    }

    // The hover found `rect`: it is outlined and is what a click takes.
    void hover(const QRectF& rect, const QString& name = QStringLiteral("Editor"), int layer = 0)
    {
        m_state.currentWindowRect = rect;
        m_state.currentWindowName = name;
        m_state.currentWindowLayer = layer;
        m_machine->showHoveredWindow(rect);
    }

    static ClipMouseEvent at(QPointF p, double t = 0.0, int clicks = 1)
    {
        return {p, Qt::NoModifier, clicks, t};
    }

    // Press at `from`, `drags` drag events ending at `to`, release there.
    void dragFrom(QPointF from, QPointF to, int drags)
    {
        m_machine->mousedown(at(from));
        for (int i = 1; i <= drags; ++i)
            m_machine->mousedragged(at(from + (to - from) * i / drags, 0.1 * i));
        m_machine->mouseup(at(to));
    }

    ClipKeyEvent key(int k, Qt::KeyboardModifiers m = Qt::NoModifier, const QString& text = {})
    {
        return {k, m, text, m_pointer, 1.0};
    }

    // A region (not a window) selected and the annotation window open.
    void selectRegion(QPointF from, QPointF to)
    {
        dragFrom(from, to, 8);
        ASSERT_TRUE(m_state.clipToolbarWindowOpened);
        ASSERT_FALSE(m_machine->onlyClipCurrentWindow());
    }

    CaptureState m_state;
    FakeClipViewHost m_host{m_state};
    std::unique_ptr<ClipStateMachine> m_machine;
    std::unique_ptr<ClipKeyHandler> m_keys;
    QPointF m_pointer;
};

TEST_F(ClipStatesTest, AClickSelectsTheWindowUnderItWithRoomForItsShadow)
{
    // The opening tip stays until the first press.
    EXPECT_TRUE(m_machine->look().tipViewShown);
    EXPECT_EQ(m_machine->look().tipText, openingTipText());
    hover(kWindow);
    m_machine->mousedown(at({300, 300}));
    EXPECT_EQ(m_machine->clipState(), ClipState::Pressed);
    EXPECT_FALSE(m_machine->look().tipViewShown);
    m_machine->mouseup(at({300, 300}));

    EXPECT_EQ(m_machine->clipState(), ClipState::Selected);
    EXPECT_TRUE(m_machine->onlyClipCurrentWindow());
    // The selection grows by the 18-point shadow; the border 6 beyond it.
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(82, 182, 436, 336));
    EXPECT_EQ(m_machine->selection().cropBorderFrame, QRectF(76, 176, 448, 348));
    EXPECT_EQ(m_state.currentRectOfAnnotatedImageView, QRectF(76, 176, 448, 348));
    // The repeated area is the window itself, in global top-left.
    EXPECT_EQ(m_host.written.value(kPreRect).toString(),
              QStringLiteral("{{100, 580}, {400, 300}}"));
    EXPECT_EQ(m_host.synchronizations, 1);
    // The border shows without handles, the annotation window opens, and
    // the release goes on to it.
    EXPECT_TRUE(m_machine->look().cropBorderAdded);
    EXPECT_TRUE(m_machine->look().cropBorderOnlyClipCurrentWindow);
    EXPECT_TRUE(m_host.sent(Cmd::OpenWindow));
    EXPECT_TRUE(m_host.sent(Cmd::DisableScrollScreenshotButton));
    EXPECT_EQ(m_host.strokeInput, std::vector<MouseEventPhase>{MouseEventPhase::Up});
    EXPECT_EQ(m_state.screenOfScreenShot, 0);
    EXPECT_EQ(m_state.mouseDraggedTimes, 0);
    // Two screens: the other one learns that a selection exists.
    EXPECT_TRUE(m_host.posted(kStartAnnotation));
}

TEST_F(ClipStatesTest, UpToSevenDragEventsKeepAWindowSelectionOfTheDraggedRectangle)
{
    hover(kWindow);
    dragFrom({300, 300}, {600, 500}, 7);
    EXPECT_TRUE(m_machine->onlyClipCurrentWindow());
    EXPECT_EQ(m_machine->clipState(), ClipState::Selected);
    // (300, 300, 300, 200) in top-left: y = 1080 - 500.
    EXPECT_EQ(m_host.written.value(kPreRect).toString(),
              QStringLiteral("{{300, 580}, {300, 200}}"));
    EXPECT_FALSE(m_machine->look().cropBorderHideHandleRect);
}

TEST_F(ClipStatesTest, TheEighthDragEventMakesARegionWithHandles)
{
    hover(kWindow);
    m_machine->mousedown(at({300, 300}));
    for (int i = 1; i <= 7; ++i)
        m_machine->mousedragged(at({300.0 + i, 300.0 + i}));
    EXPECT_TRUE(m_machine->onlyClipCurrentWindow());
    EXPECT_EQ(m_machine->clipState(), ClipState::Dragging);
    m_machine->mousedragged(at({600.7, 500.2}));
    EXPECT_FALSE(m_machine->onlyClipCurrentWindow());
    EXPECT_FALSE(m_machine->look().selectedBoxTransparent);
    EXPECT_TRUE(m_machine->look().magnifierShown);
    EXPECT_EQ(m_host.cursors.back(), ClipCursor::Null);
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(300, 300, 300, 200));
    ASSERT_TRUE(m_machine->look().sizeLabel.has_value());
    EXPECT_EQ(m_machine->look().sizeLabel->widthText, QStringLiteral("300"));

    m_machine->mouseup(at({600, 500}));
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(300, 300, 300, 200));
    EXPECT_EQ(m_state.currentRectOfAnnotatedImageView, QRectF(294, 294, 312, 212));
    EXPECT_TRUE(m_machine->look().cropBorderAdded);
    EXPECT_FALSE(m_machine->look().cropBorderOnlyClipCurrentWindow);
    EXPECT_FALSE(m_machine->look().magnifierShown);
    EXPECT_EQ(m_host.windowBackgroundsCleared, 0);
}

TEST_F(ClipStatesTest, ARectangleBelowOnePointClickedOrDraggedCancelsTheCapture)
{
    // Nothing hovered: the click falls back on an empty window rectangle.
    m_machine->mousedown(at({300, 300}));
    m_machine->mouseup(at({300, 300}));
    EXPECT_TRUE(m_host.posted(kCancel));
    EXPECT_FALSE(m_host.sent(Cmd::OpenWindow));
    EXPECT_NE(m_machine->clipState(), ClipState::Selected);

    // A region dragged back to zero width cancels too.
    m_state = CaptureState();
    m_host.messages.clear();
    open(0);
    m_state.currentWindowRect = QRectF(5, 5, 0.5, 40);
    m_machine->mousedown(at({300, 300}));
    for (int i = 1; i <= 8; ++i)
        m_machine->mousedragged(at({300, 300.0 + 10 * i}));
    m_machine->mouseup(at({300, 380}));
    EXPECT_TRUE(m_host.posted(kCancel));
    EXPECT_FALSE(m_host.sent(Cmd::OpenWindow));
}

TEST_F(ClipStatesTest, AClickOnTheDesktopSelectsTheWholeScreenAsARegionWithHandles)
{
    hover(kPrimary, QStringLiteral("Desktop Picture - DP-1"), -2147483624);
    dragFrom({700, 700}, {700, 700}, 0);
    EXPECT_FALSE(m_machine->onlyClipCurrentWindow());
    EXPECT_EQ(m_machine->selection().contentRect, kPrimary);
    EXPECT_TRUE(m_machine->look().cropBorderAdded);
    // The border shows its handles: it was never told a window was taken.
    EXPECT_FALSE(m_machine->look().cropBorderOnlyClipCurrentWindow);
    EXPECT_FALSE(m_machine->look().cropBorderHideHandleRect);
    EXPECT_FALSE(m_state.annotatedOnMap);
    EXPECT_EQ(m_host.written.value(kPreRect).toString(), QStringLiteral("{{0, 0}, {1920, 1080}}"));

    // And the top handle shrinks it like any region.
    m_host.border = {false, true, handles::Top, handles::Top};
    m_machine->mousedown(at({960, 1083}));
    EXPECT_EQ(m_machine->dragMode(), DragMode::Resize);
    m_machine->mousedragged(at({960, 800}));
    m_machine->mouseup(at({960, 800}));
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(0, 0, 1920, 800));
}

TEST_F(ClipStatesTest, AClickOnAPinMarksItUpWithoutAShadowMargin)
{
    hover(kWindow, QStringLiteral("mappingWindowByKelvo"));
    dragFrom({300, 300}, {300, 300}, 0);
    EXPECT_TRUE(m_state.annotatedOnMap);
    EXPECT_EQ(m_machine->selection().contentRect, kWindow);
}

TEST_F(ClipStatesTest, ADragThatLeavesItsScreenGrowsFromTheOtherScreensCorner)
{
    auto second = std::make_unique<ClipStateMachine>(m_state, m_host, testing::twoScreens(), 1);
    second->showClipViewWithFrame({0, 0, 1280, 1024}, false, false);

    // The press and the first drags on the primary screen.
    m_machine->mousedown(at({1800, 500}));
    for (int i = 0; i < 3; ++i)
        m_machine->mousedragged(at({1850, 520}));
    const QRectF leftBehind = m_machine->selection().contentRect;

    // The second screen's monitors now hand it the drags: its overlay never
    // saw the press, so the region starts at its bottom-left corner.
    m_host.underMouse = 1;
    for (int i = 0; i < 4; ++i)
        second->mousedragged(at({100, 600}));
    EXPECT_EQ(second->clipState(), ClipState::Dragging);
    EXPECT_EQ(second->selection().contentRect, QRectF(0, 0, 100, 600));
    EXPECT_TRUE(second->onlyClipCurrentWindow());
    // The drag events are counted for the whole capture: this is the eighth.
    second->mousedragged(at({100, 600}));
    EXPECT_FALSE(second->onlyClipCurrentWindow());

    second->mouseup(at({100, 600}));
    EXPECT_EQ(second->clipState(), ClipState::Selected);
    EXPECT_EQ(second->selection().contentRect, QRectF(0, 0, 100, 600));
    // Global top-left: the second screen starts at x 1920, its top at y 0.
    EXPECT_EQ(m_host.written.value(kPreRect).toString(),
              QStringLiteral("{{1920, 424}, {100, 600}}"));
    EXPECT_EQ(m_state.screenOfScreenShot, 1);
    // The first overlay stays where the pointer left it.
    EXPECT_EQ(m_machine->selection().contentRect, leftBehind);
    EXPECT_EQ(m_machine->clipState(), ClipState::Dragging);
}

TEST_F(ClipStatesTest, ARegionNeverExceedsTheScreen)
{
    m_machine->mousedown(at({1800, 1000}));
    for (int i = 0; i < 8; ++i)
        m_machine->mousedragged(at({2500, 1400}));
    EXPECT_EQ(m_machine->rectEndPoint(), QPointF(1920, 1080));
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(1800, 1000, 120, 80));
    m_machine->mousedragged(at({-50, -20}));
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(0, 0, 1800, 1000));
}

TEST_F(ClipStatesTest, EscapeCancelsOnlyWithoutModifiers)
{
    for (Qt::KeyboardModifiers m :
         {Qt::ShiftModifier, Qt::ControlModifier, Qt::AltModifier, Qt::MetaModifier}) {
        EXPECT_FALSE(m_keys->monitorKeyDown(key(Qt::Key_Escape, m)));
        EXPECT_FALSE(m_host.posted(kCancel));
    }
    EXPECT_EQ(m_host.forwardedKeys.size(), 4u);
    // The keypad flag is no modifier of the capture's.
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_Escape, Qt::KeypadModifier)));
    EXPECT_TRUE(m_host.posted(kCancel));
    EXPECT_EQ(m_host.forwardedKeys.size(), 4u);
}

TEST_F(ClipStatesTest, FTakesTheWholeScreenOnTheScreenUnderTheMouseOnly)
{
    m_host.underMouse = 1;
    EXPECT_FALSE(m_keys->monitorKeyDown(key(Qt::Key_F)));
    EXPECT_FALSE(m_host.sent(Cmd::OpenWindow));

    m_host.underMouse = 0;
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_F, Qt::ShiftModifier)));
    EXPECT_FALSE(m_machine->onlyClipCurrentWindow());
    EXPECT_EQ(m_machine->selection().contentRect, kPrimary);
    EXPECT_EQ(m_machine->selection().cropBorderFrame, QRectF(-6, -6, 1932, 1092));
    EXPECT_EQ(m_state.currentRectOfAnnotatedImageView, QRectF(-6, -6, 1932, 1092));
    EXPECT_FALSE(m_machine->look().selectedBoxAdded);
    EXPECT_FALSE(m_machine->look().tipViewAdded); // the tip box is gone for good
    EXPECT_TRUE(m_host.sent(Cmd::OpenWindow));
    EXPECT_TRUE(m_host.posted(kStartAnnotation));
    // The state stays; the open annotation window keeps the view from acting.
    EXPECT_EQ(m_machine->clipState(), ClipState::Waiting);

    // Once the annotation window is open, F is an ordinary key.
    m_host.commands.clear();
    EXPECT_FALSE(m_keys->monitorKeyDown(key(Qt::Key_F)));
    EXPECT_FALSE(m_host.sent(Cmd::OpenWindow));
}

TEST_F(ClipStatesTest, ColourKeysAreOfferedOnlyBeforeTheAnnotationWindowOpens)
{
    m_host.colourKeyActs = true;
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_R)));
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_Z, Qt::ShiftModifier)));
    EXPECT_EQ(m_host.colourKeys, (std::vector<int>{Qt::Key_R, Qt::Key_Z}));
    m_state.clipToolbarWindowOpened = true;
    EXPECT_FALSE(m_keys->monitorKeyDown(key(Qt::Key_H)));
    EXPECT_EQ(m_host.colourKeys.size(), 2u);
}

TEST_F(ClipStatesTest, MonitorHandsDeleteReturnAndUndoToTheirOwners)
{
    m_host.mark.textView = true;
    m_host.mark.textViewMouseLocation = 5;
    EXPECT_FALSE(m_keys->monitorKeyDown(key(Qt::Key_Backspace)));
    m_host.mark.textViewMouseLocation = 1;
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_Delete)));
    EXPECT_FALSE(m_keys->monitorKeyDown(key(Qt::Key_Return)));
    EXPECT_EQ(m_host.keyDownCodes, (std::vector<int>{51, 51, 36}));

    m_state.clipToolbarWindowOpened = true;
    m_keys->monitorKeyDown(key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier));
    m_keys->monitorKeyDown(key(Qt::Key_Z, Qt::ControlModifier | Qt::AltModifier));
    EXPECT_EQ(m_host.firstResponderRequests, 1);
}

TEST_F(ClipStatesTest, MarkUpOfAPinFromItsMenuTakesKeysBeforeTheFirstStroke)
{
    m_state.annotatedOnMapFromRightMouse = true;
    m_state.clipToolbarWindowOpened = true;
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_4, Qt::NoModifier, QStringLiteral("4"))));
    EXPECT_TRUE(m_host.sent(Cmd::ArrowButtonClick));
    EXPECT_TRUE(m_host.forwardedKeys.empty());
    m_host.mark.numberOfStrokes = 1;
    EXPECT_FALSE(m_keys->monitorKeyDown(key(Qt::Key_4, Qt::NoModifier, QStringLiteral("4"))));
    EXPECT_EQ(m_host.forwardedKeys.size(), 1u);
}

TEST_F(ClipStatesTest, ToolShortCutsAreRoutedToTheAnnotationController)
{
    m_keys->keyDown(key(Qt::Key_4, Qt::NoModifier, QStringLiteral("4")));
    EXPECT_TRUE(m_host.commands.empty()); // the annotation window is closed

    hover(kWindow);
    dragFrom({300, 300}, {300, 300}, 0);
    m_host.commands.clear();
    m_host.mark.numberOfStrokes = 1;
    m_keys->keyDown(key(Qt::Key_4, Qt::NoModifier, QStringLiteral("4")));
    m_keys->keyDown(key(Qt::Key_T, Qt::NoModifier, QStringLiteral("t")));
    m_keys->keyDown(key(Qt::Key_Space, Qt::NoModifier, QStringLiteral(" ")));
    m_keys->keyDown(key(Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r")));
    // A window selection cannot scroll; a modifier makes no short cut.
    m_keys->keyDown(key(Qt::Key_S, Qt::NoModifier, QStringLiteral("s")));
    m_keys->keyDown(key(Qt::Key_5, Qt::AltModifier, QStringLiteral("5")));
    EXPECT_EQ(m_host.commands,
              (std::vector<Cmd>{Cmd::ArrowButtonClick, Cmd::MapButtonClick, Cmd::SaveButtonClick,
                                Cmd::CopyToPasteButtonClick}));
    // Only a tool choice ends a pending move.
    EXPECT_EQ(m_host.borderCanMoveCleared, 1);

    m_host.commands.clear();
    m_host.scrolling = true;
    m_keys->keyDown(key(Qt::Key_1, Qt::NoModifier, QStringLiteral("1")));
    m_keys->keyDown(key(Qt::Key_Space, Qt::NoModifier, QStringLiteral(" ")));
    EXPECT_EQ(m_host.commands, std::vector<Cmd>{Cmd::SaveButtonClick});
}

TEST_F(ClipStatesTest, GlobalHotKeysComeBeforeEveryKeyOfTheOverlay)
{
    // Alt+Z would otherwise be the colour key Z with a modifier.
    m_host.colourKeyActs = true;
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_Z, Qt::AltModifier, QStringLiteral("z"))));
    EXPECT_EQ(m_host.hotKeysRun, 1);
    EXPECT_TRUE(m_host.colourKeys.empty());
    EXPECT_TRUE(m_host.forwardedKeys.empty());

    // Also with the selection standing; the keypad flag makes no other key.
    selectRegion({300, 300}, {600, 500});
    m_host.globalKey = {Qt::Key_F1, Qt::NoModifier};
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_F1, Qt::KeypadModifier)));
    EXPECT_EQ(m_host.hotKeysRun, 2);
    EXPECT_FALSE(m_host.posted(kCancel));
    // Other keys go their usual way.
    EXPECT_TRUE(m_keys->monitorKeyDown(key(Qt::Key_Escape)));
    EXPECT_TRUE(m_host.posted(kCancel));
    EXPECT_EQ(m_host.hotKeysRun, 2);
}

TEST_F(ClipStatesTest, TwoTapsOfTheChosenModifierSaveAndOpenOnceTheToolBarIsOpen)
{
    double t = 10.0;
    // A tap: the modifier alone down, then up, 0.1 second apart.
    const auto tap = [&](Qt::KeyboardModifier modifier) {
        m_keys->flagsChanged(modifier, t += 0.1);
        m_keys->flagsChanged(Qt::NoModifier, t += 0.1);
    };
    m_host.prefs.doubleClickModifierKey = QStringLiteral("Option");
    tap(Qt::AltModifier);
    tap(Qt::AltModifier);
    EXPECT_EQ(m_host.savesAndOpens, 0); // nothing selected yet

    selectRegion({300, 300}, {600, 500});
    tap(Qt::AltModifier);
    tap(Qt::AltModifier);
    EXPECT_EQ(m_host.savesAndOpens, 1);
    // Releases further apart than half a second are no pair.
    t += 1.0;
    tap(Qt::AltModifier);
    t += 0.4;
    tap(Qt::AltModifier);
    EXPECT_EQ(m_host.savesAndOpens, 1);

    // Shift held with it, or a key typed while it is down, spoils a tap.
    t += 1.0;
    tap(Qt::AltModifier);
    m_keys->flagsChanged(Qt::AltModifier | Qt::ShiftModifier, t += 0.1);
    m_keys->flagsChanged(Qt::NoModifier, t += 0.1);
    m_keys->flagsChanged(Qt::AltModifier, t += 0.1);
    m_keys->monitorKeyDown(key(Qt::Key_X, Qt::AltModifier, QStringLiteral("x")));
    m_keys->flagsChanged(Qt::NoModifier, t += 0.1);
    EXPECT_EQ(m_host.savesAndOpens, 1);

    // Another modifier does nothing; each name has its own key.
    t += 1.0;
    tap(Qt::ControlModifier);
    tap(Qt::ControlModifier);
    EXPECT_EQ(m_host.savesAndOpens, 1);
    m_host.prefs.doubleClickModifierKey = QStringLiteral("Command");
    tap(Qt::ControlModifier);
    tap(Qt::ControlModifier);
    EXPECT_EQ(m_host.savesAndOpens, 2);
    m_host.prefs.doubleClickModifierKey = QStringLiteral("Control");
    t += 1.0;
    tap(Qt::MetaModifier);
    tap(Qt::MetaModifier);
    EXPECT_EQ(m_host.savesAndOpens, 3);
}

TEST(ModifierKeys, TheKeyItselfSaysWhetherItsModifierIsHeldNow)
{
    EXPECT_EQ(heldAfter(Qt::Key_Alt, true, Qt::NoModifier), Qt::AltModifier);
    EXPECT_EQ(heldAfter(Qt::Key_Alt, false, Qt::AltModifier), Qt::NoModifier);
    EXPECT_EQ(heldAfter(Qt::Key_Super_L, true, Qt::ShiftModifier),
              Qt::ShiftModifier | Qt::MetaModifier);
    EXPECT_EQ(heldAfter(Qt::Key_Control, false, Qt::ControlModifier | Qt::AltModifier),
              Qt::AltModifier);
    EXPECT_EQ(heldAfter(Qt::Key_A, true, Qt::AltModifier), Qt::AltModifier);
}

TEST_F(ClipStatesTest, TheKeypadsEnterIsReturn)
{
    const ClipKeyEvent enter = key(Qt::Key_Enter, Qt::KeypadModifier, QStringLiteral("\r"));
    // An open text view takes it as Return.
    m_host.mark.textView = true;
    EXPECT_FALSE(m_keys->monitorKeyDown(enter));
    EXPECT_EQ(m_host.keyDownCodes, std::vector<int>{36});
    EXPECT_EQ(m_host.forwardedKeys, std::vector<int>{Qt::Key_Return});
    m_host.mark.textView = false;

    // With a selection it copies, as Return does.
    selectRegion({300, 300}, {600, 500});
    m_host.commands.clear();
    m_host.mark.numberOfStrokes = 1;
    m_keys->keyDown(enter);
    EXPECT_EQ(m_host.commands, std::vector<Cmd>{Cmd::CopyToPasteButtonClick});
}

TEST_F(ClipStatesTest, UndoRedoAndDeleteInTheOpenAnnotationWindow)
{
    m_state.clipToolbarWindowOpened = true;
    m_host.mark.numberOfStrokes = 3;
    m_keys->keyDown(key(Qt::Key_Z, Qt::ControlModifier));
    m_keys->keyDown(key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier));
    m_keys->keyDown(key(Qt::Key_Z, Qt::ControlModifier | Qt::MetaModifier));
    m_keys->keyDown(key(Qt::Key_Backspace)); // no current stroke
    EXPECT_EQ(m_host.commands, (std::vector<Cmd>{Cmd::UndoButton, Cmd::RedoButton}));

    m_host.mark.stroke = overlay::StrokeTraits{}; // an arrow
    m_host.mark.undoTimes = 3;
    m_keys->keyDown(key(Qt::Key_Delete));
    EXPECT_EQ(m_host.commands,
              (std::vector<Cmd>{Cmd::UndoButton, Cmd::RedoButton, Cmd::DeleteCurrentStroke,
                                Cmd::DisEnableUndoButton}));
    EXPECT_EQ(m_host.cursors.back(), ClipCursor::Arrow);
}

TEST_F(ClipStatesTest, AWindowSelectionCanBeNeitherMovedNorResized)
{
    hover(kWindow);
    dragFrom({300, 300}, {300, 300}, 0);
    const QRectF fixed = m_machine->selection().contentRect;
    m_host.border.isCanMove = true;
    dragFrom({300, 300}, {500, 400}, 10);
    EXPECT_EQ(m_machine->selection().contentRect, fixed);
    EXPECT_FALSE(m_host.posted(kHidden));
}

TEST_F(ClipStatesTest, MovingARegionHidesTheToolBarAndTheReleaseSettlesEveryPlace)
{
    selectRegion({300, 300}, {600, 500});
    m_host.written.clear();
    m_host.border.isCanMove = true;
    m_machine->mousedown(at({400, 400}));
    EXPECT_EQ(m_machine->dragMode(), DragMode::Move);
    EXPECT_TRUE(m_state.GKCropBorderViewCanMove);
    m_machine->mousedragged(at({450, 380}));
    m_machine->mousedragged(at({460, 380}));
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(360, 280, 300, 200));
    EXPECT_EQ(m_machine->selection().cropBorderFrame, QRectF(354, 274, 312, 212));
    // The annotation layers lag in size until the release.
    EXPECT_EQ(m_state.currentRectOfAnnotatedImageView, QRectF(354, 274, 300, 200));
    EXPECT_EQ(std::count(m_host.messages.begin(), m_host.messages.end(), kHidden), 1);

    m_machine->mouseup(at({460, 380}));
    EXPECT_EQ(m_state.currentRectOfAnnotatedImageView, QRectF(354, 274, 312, 212));
    EXPECT_FALSE(m_state.buttonBoxHiddened);
    EXPECT_TRUE(m_host.posted(kUnhidden));
    EXPECT_EQ(m_host.written.value(kPreRect).toString(),
              QStringLiteral("{{360, 600}, {300, 200}}"));
    EXPECT_EQ(m_machine->clipState(), ClipState::Selected);
    EXPECT_FALSE(m_state.GKCropBorderViewCanMove);
}

TEST_F(ClipStatesTest, ResizingARegionFlipsAcrossTheOppositeSide)
{
    selectRegion({300, 300}, {600, 500});
    // The border frame is (294, 294, 312, 212); press on its right handle.
    m_host.border = {false, true, handles::Right, handles::Right};
    m_machine->mousedown(at({603, 400}));
    EXPECT_EQ(m_machine->dragMode(), DragMode::Resize);
    m_machine->mousedragged(at({200, 420}));
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(200, 300, 100, 200));
    EXPECT_EQ(m_host.later.back().first, 30);
    m_host.runLater();
    EXPECT_TRUE(m_machine->look().magnifierShown);
    m_machine->mouseup(at({200, 420}));
    EXPECT_EQ(m_state.currentRectOfAnnotatedImageView, QRectF(194, 294, 112, 212));
    // The release forgets the pointer's hot spot, so its tips are asked again.
    EXPECT_EQ(m_state.lastHotSpot, QPointF(-1, -1));
}

TEST_F(ClipStatesTest, AClickInTheOpenAnnotationWindowChangesNothing)
{
    selectRegion({300, 300}, {600, 500});
    const int writes = m_host.written.size();
    m_host.messages.clear();
    dragFrom({1000, 900}, {1000, 900}, 0);
    EXPECT_EQ(m_machine->dragMode(), DragMode::None);
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(300, 300, 300, 200));
    EXPECT_TRUE(m_host.messages.empty());
    EXPECT_EQ(m_host.written.size(), writes);
}

TEST_F(ClipStatesTest, APressWithAToolDrawsAStrokeInsteadOfChangingTheSelection)
{
    selectRegion({300, 300}, {600, 500});
    m_host.mark.drawingTool = true;
    m_host.mark.stroke = overlay::StrokeTraits{}; // an arrow
    m_host.strokeInput.clear();
    dragFrom({400, 400}, {500, 450}, 3);
    EXPECT_EQ(m_host.strokeInput,
              (std::vector<MouseEventPhase>{MouseEventPhase::Down, MouseEventPhase::Dragged,
                                            MouseEventPhase::Dragged, MouseEventPhase::Dragged,
                                            MouseEventPhase::Up}));
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(300, 300, 300, 200));
    EXPECT_FALSE(m_host.posted(kHidden));
}

TEST_F(ClipStatesTest, TheCurrentStrokesTraitsDecideItsTextEditingAndRepaints)
{
    selectRegion({300, 300}, {600, 500});
    m_host.mark.drawingTool = true;

    // A text stroke: a press in the selection off any stroke ends its editing
    // and goes no further.
    m_host.mark.stroke = overlay::StrokeTraits{.holdsText = true};
    m_host.strokeInput.clear();
    m_machine->mousedown(at({400, 400}));
    EXPECT_EQ(m_host.mark.textEditsEnded, 1);
    EXPECT_TRUE(m_host.strokeInput.empty());

    // A stroke costly to paint repaints on every third drag only.
    m_host.mark.stroke = overlay::StrokeTraits{.paintsSparingly = true};
    m_machine->mousedown(at({400, 400}));
    m_host.repaints = 0;
    for (int i = 1; i <= 6; ++i)
        m_machine->mousedragged(at({400.0 + i, 400}));
    EXPECT_EQ(m_host.repaints, 2);

    // Only a stroke that asks for it renews the overlay at the release.
    m_host.repaints = 0;
    m_machine->mouseup(at({406, 400}));
    EXPECT_EQ(m_host.repaints, 0);
    m_host.mark.stroke = overlay::StrokeTraits{.repaintsOnRelease = true};
    m_machine->mousedown(at({400, 400}));
    m_host.repaints = 0;
    m_machine->mouseup(at({400, 400}));
    EXPECT_EQ(m_host.repaints, 1);
    EXPECT_EQ(m_host.mark.textEditsEnded, 1);
}

TEST_F(ClipStatesTest, GuardsDropEventsWhileSomethingElseHasTheUser)
{
    m_host.savePanel = true;
    m_machine->mousedown(at({300, 300}));
    EXPECT_EQ(m_machine->clipState(), ClipState::Waiting);
    m_host.savePanel = false;
    m_host.tipsBox = true;
    m_machine->mousedragged(at({300, 300}));
    EXPECT_EQ(m_state.mouseDraggedTimes, 0);
    m_host.tipsBox = false;
    m_host.scrolling = true;
    m_machine->mousedown(at({300, 300}));
    EXPECT_EQ(m_machine->clipState(), ClipState::Waiting);
    // The first press hid the opening tip even though it went no further.
    EXPECT_FALSE(m_machine->look().tipViewShown);
}

TEST_F(ClipStatesTest, ADoubleClickInTheSelectionCopiesAfterTenMilliseconds)
{
    selectRegion({300, 300}, {600, 500});
    m_host.commands.clear();
    m_machine->mousedown(at({400, 400}, 2.0, 2));
    ASSERT_EQ(m_host.later.size(), 1u);
    EXPECT_EQ(m_host.later.front().first, 10);
    EXPECT_TRUE(m_host.commands.empty());
    m_host.runLater();
    EXPECT_EQ(m_host.commands, std::vector<Cmd>{Cmd::CopyToPasteButtonClick});

    m_host.prefs.doubleClickToSavePaste = false;
    m_machine->mousedown(at({400, 400}, 3.0, 2));
    EXPECT_TRUE(m_host.later.empty());
}

TEST_F(ClipStatesTest, ShiftOverAWindowPicksAndEveryPressWhilePickingWaits)
{
    hover(kWindow);
    m_machine->mousedown({{300, 300}, Qt::ShiftModifier, 1, 0.0});
    EXPECT_EQ(m_host.picksEntered, 1);
    EXPECT_EQ(m_machine->clipState(), ClipState::Waiting);
    m_machine->mousedragged(at({320, 320}));
    EXPECT_EQ(m_state.mouseDraggedTimes, 0);
    m_machine->mouseup(at({300, 300}));
    EXPECT_EQ(m_host.picksToggled, 1);
    EXPECT_FALSE(m_host.sent(Cmd::OpenWindow));
}

TEST_F(ClipStatesTest, ArrowKeysOnAHandleResizeByOnePointAndWarpThePointer)
{
    selectRegion({0, 300}, {300, 500});
    m_host.messages.clear();
    m_host.border.whichInResizeRect = handles::Left;
    m_pointer = {-3, 400};
    // Not on a handle's cursor: nothing.
    m_keys->keyDown(key(Qt::Key_Left));
    EXPECT_TRUE(m_host.warps.empty());

    m_state.pointerRole = PointerRole::Resize;
    m_keys->keyDown(key(Qt::Key_Left));
    // At the screen's left edge the selection still grows past it.
    EXPECT_EQ(m_machine->selection().cropBorderFrame, QRectF(-7, 294, 313, 212));
    EXPECT_EQ(m_machine->selection().contentRect, QRectF(-1, 300, 301, 200));
    EXPECT_EQ(m_state.currentRectOfAnnotatedImageView, QRectF(-7, 294, 313, 212));
    EXPECT_EQ(m_host.warps, std::vector<QPointF>{QPointF(-4, 400)});
    EXPECT_TRUE(m_state.resizeByKeyBoard);
    EXPECT_FALSE(m_host.cursorRectsEnabled);
    // Up along the left edge does nothing.
    m_keys->keyDown(key(Qt::Key_Up));
    EXPECT_EQ(m_host.warps.size(), 1u);
    EXPECT_EQ(std::count(m_host.messages.begin(), m_host.messages.end(), kHidden), 1);

    // The next move ends the keyboard change; a second one does nothing more.
    m_keys->mouseMoved();
    EXPECT_FALSE(m_state.resizeByKeyBoard);
    EXPECT_TRUE(m_host.cursorRectsEnabled);
    m_keys->mouseMoved();
    EXPECT_EQ(std::count(m_host.messages.begin(), m_host.messages.end(), kUnhidden), 1);

    // A capture that ends before the move leaves the next one unharmed:
    // its first selection opens the annotation window.
    m_keys->keyDown(key(Qt::Key_Left));
    ASSERT_TRUE(m_state.buttonBoxHiddened);
    m_state.clipToolbarWindowOpened = false; // Escape closed it
    open(0);
    m_host.commands.clear();
    selectRegion({300, 300}, {600, 500});
    EXPECT_TRUE(m_host.sent(Cmd::OpenWindow));
    EXPECT_FALSE(m_state.resizeByKeyBoard);
}

TEST_F(ClipStatesTest, ARegionsBrightHoleSitsOnePointInsideItsOutline)
{
    hover(kWindow);
    selectRegion({300, 300}, {600, 500});
    EXPECT_EQ(m_machine->surround().outlineBox, QRectF(298, 298, 304, 204));
    EXPECT_EQ(m_machine->surround().hole, QRectF(299, 299, 302, 202));
}

TEST_F(ClipStatesTest, StartAnnotationActsOnlyForAPinMarkUpFromItsMenu)
{
    m_state.currentRectOfAnnotatedImageView = QRectF(94, 194, 412, 312);
    m_machine->startAnnotation();
    EXPECT_EQ(m_machine->clipState(), ClipState::Waiting);

    m_state.annotatedOnMapFromRightMouse = true;
    m_machine->startAnnotation();
    EXPECT_EQ(m_machine->clipState(), ClipState::Selected);
    EXPECT_TRUE(m_machine->onlyClipCurrentWindow());
    EXPECT_EQ(m_machine->selection().contentRect, kWindow);
    EXPECT_EQ(m_machine->selection().selectedBoxFrame, QRectF(98, 198, 404, 304));
    EXPECT_EQ(m_state.screenOfScreenShot, 0);
}

} // namespace
} // namespace capture
