// SPDX-License-Identifier: GPL-3.0-or-later
// Multi-window picks and the composition of the finished picture.
#include "capture/logic/CaptureComposer.h"
#include "capture/logic/FinishRequest.h"
#include "capture/logic/MultiWindowPick.h"

#include <QPainter>

#include <gtest/gtest.h>

using namespace capture;

namespace {

core::Picture solid(QSize size, QColor colour)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return core::Picture::pixelsAsPoints(image);
}

// Three frozen windows, front to back: 1, 2, 3.
CaptureState threeWindows()
{
    CaptureState s;
    s.imageAllWindowArray.push_back({1, solid({10, 10}, Qt::red), QRectF(0, 0, 10, 10), "front"});
    s.imageAllWindowArray.push_back({2, solid({10, 10}, Qt::green), QRectF(0, 0, 10, 10), "mid"});
    s.imageAllWindowArray.push_back({3, solid({10, 10}, Qt::blue), QRectF(0, 0, 10, 10), "back"});
    return s;
}

std::vector<std::uint32_t> ids(const std::vector<PickedWindow>& picks)
{
    std::vector<std::uint32_t> out;
    for (const PickedWindow& p : picks)
        out.push_back(p.windowId);
    return out;
}

} // namespace

TEST(MultiWindowPick, keepsClickOrderAndWindowOrderAndTogglesOff)
{
    CaptureState s = threeWindows();
    EXPECT_EQ(togglePick(s, 3, QRectF(0, 0, 10, 10), 0), PickClick::Added);
    EXPECT_EQ(togglePick(s, 1, QRectF(20, 0, 10, 10), 0), PickClick::Added);
    EXPECT_EQ(togglePick(s, 2, QRectF(40, 0, 10, 10), 0), PickClick::Added);
    EXPECT_EQ(ids(s.arrOfPreAllSelectedScreenshots), (std::vector<std::uint32_t>{3, 1, 2}));
    EXPECT_EQ(ids(s.arrOfAllSelectedScreenshots), (std::vector<std::uint32_t>{1, 2, 3}));

    // A second click drops the window and leaves the rest as they were.
    EXPECT_EQ(togglePick(s, 1, QRectF(20, 0, 10, 10), 0), PickClick::Removed);
    EXPECT_EQ(ids(s.arrOfAllSelectedScreenshots), (std::vector<std::uint32_t>{2, 3}));
    EXPECT_FALSE(isPicked(s, 1));
    EXPECT_TRUE(isPicked(s, 3));
    EXPECT_EQ(s.arrOfAllSelectedScreenshots.back().rect, QRectF(0, 0, 10, 10));
}

TEST(MultiWindowPick, refusesOtherScreensAndWindowsWithoutPicture)
{
    CaptureState s = threeWindows();
    ASSERT_EQ(togglePick(s, 2, QRectF(0, 0, 10, 10), 1), PickClick::Added);
    EXPECT_EQ(togglePick(s, 3, QRectF(0, 0, 10, 10), 0), PickClick::OtherScreen);
    EXPECT_EQ(togglePick(s, 99, QRectF(0, 0, 10, 10), 1), PickClick::NotPickable);
    EXPECT_EQ(ids(s.arrOfAllSelectedScreenshots), (std::vector<std::uint32_t>{2}));
}

TEST(MultiWindowPick, frameHoldsEveryPickWithItsShadowAndTheBand)
{
    std::vector<PickedWindow> picks(2);
    picks[0].rect = QRectF(100.7, 50.2, 200, 100);
    picks[1].rect = QRectF(400, 300, 50.5, 60);
    // Without a shadow: the bounding box, each edge cut to a whole number, plus 6.
    EXPECT_EQ(pickedFrame(picks, 0), QRectF(94, 44, 450 - 100 + 12, 360 - 50 + 12));
    // A shadow of 10 adds 10 on every side.
    EXPECT_EQ(pickedFrame(picks, 10), QRectF(84, 34, 460 - 90 + 12, 370 - 40 + 12));
}

TEST(MultiWindowPick, hoveredWindowBecomesAPickOfOneWithoutItsShadowRoom)
{
    CaptureState s = threeWindows();
    s.currentWindowID = 2;
    s.currentRectOfAnnotatedImageView = QRectF(76, 76, 148, 128); // window 100,100 100x80, S 18
    const QRectF screen(0, 0, 1920, 1080);
    ASSERT_TRUE(addPickOfOne(s, true, QRectF(100, 100, 100, 80), screen, 18, 0));
    ASSERT_EQ(s.arrOfAllSelectedScreenshots.size(), 1u);
    EXPECT_EQ(s.arrOfAllSelectedScreenshots[0].rect, QRectF(100, 100, 100, 80));
    EXPECT_EQ(s.arrOfAllSelectedScreenshots[0].kCGWindowName, "mid");

    // Not again, not for a region, a whole screen, a pin's mark-up or a window without picture.
    EXPECT_FALSE(addPickOfOne(s, true, QRectF(100, 100, 100, 80), screen, 18, 0));
    CaptureState r = threeWindows();
    r.currentWindowID = 2;
    EXPECT_FALSE(addPickOfOne(r, false, QRectF(1, 1, 5, 5), screen, 0, 0));
    EXPECT_FALSE(addPickOfOne(r, true, screen, screen, 0, 0));
    r.currentWindowID = 42;
    EXPECT_FALSE(addPickOfOne(r, true, QRectF(1, 1, 5, 5), screen, 0, 0));
    r.currentWindowID = 2;
    r.annotatedOnMap = true;
    EXPECT_FALSE(addPickOfOne(r, true, QRectF(1, 1, 5, 5), screen, 0, 0));
    EXPECT_TRUE(r.arrOfAllSelectedScreenshots.empty());
}

namespace {

// A 200x100 screen whose every pixel tells where it is: red = x, green = y
// counted from the top. As a 24-bit X screen sends it: the alpha byte is 0.
core::Picture coordinateScreen()
{
    QImage image(200, 100, QImage::Format_RGB32);
    for (int y = 0; y < 100; ++y) {
        auto* row = reinterpret_cast<quint32*>(image.scanLine(y));
        for (int x = 0; x < 200; ++x)
            row[x] = qRgb(x, y, 7) & 0x00ffffffu;
    }
    return core::Picture::pixelsAsPoints(image);
}

CompositionInput region(QRectF selection, int shadow)
{
    CompositionInput in;
    in.R = selection.adjusted(-6, -6, 6, 6);
    in.S = shadow;
    in.shadowColour = QColor(0, 0, 0, 102);
    in.fullImage = coordinateScreen();
    in.windowSize = QSizeF(200, 100);
    return in;
}

} // namespace

TEST(CaptureComposer, regionIsExactlyTheFrozenPixelsUnderTheSelection)
{
    // y-up selection at x 30, bottom 20, 50x40: its top row is screen row 100-60 = 40.
    const core::Picture p = composeCapture(region(QRectF(30, 20, 50, 40), 0));
    ASSERT_EQ(p.pixels.size(), QSize(50, 40));
    for (int y = 0; y < 40; ++y)
        for (int x = 0; x < 50; ++x)
            ASSERT_EQ(p.pixels.pixel(x, y), qRgb(30 + x, 40 + y, 7)) << x << "," << y;
}

TEST(CaptureComposer, regionShadowWidensThePictureAndRoundingClearsCorners)
{
    CompositionInput in = region(QRectF(30, 20, 50, 40), 10);
    const core::Picture shadowed = composeCapture(in);
    ASSERT_EQ(shadowed.pixels.size(), QSize(70, 60));
    EXPECT_EQ(shadowed.pixels.pixel(10, 10), qRgb(30, 40, 7)); // the selection, centred
    EXPECT_GT(qAlpha(shadowed.pixels.pixel(5, 30)), 0);        // shadow in the margin
    EXPECT_EQ(qAlpha(shadowed.pixels.pixel(0, 0)), 0);

    // A pin of the same region: no shadow, no rounding, no margin.
    in.mapImage = true;
    in.fillet = true;
    const core::Picture pin = composeCapture(in);
    ASSERT_EQ(pin.pixels.size(), QSize(50, 40));
    EXPECT_EQ(pin.pixels.pixel(0, 0), qRgb(30, 40, 7));

    in.mapImage = false;
    in.S = 0;
    const core::Picture rounded = composeCapture(in);
    EXPECT_EQ(qAlpha(rounded.pixels.pixel(0, 0)), 0);
    EXPECT_EQ(qAlpha(rounded.pixels.pixel(49, 39)), 0);
    EXPECT_EQ(rounded.pixels.pixel(25, 20), qRgb(55, 60, 7));
}

TEST(CaptureComposer, windowsAreDrawnBackToFrontWithShadowsExceptPins)
{
    CompositionInput in;
    in.onlyClipCurrentWindow = true;
    in.S = 4;
    in.shadowColour = QColor(0, 0, 0, 200);
    // Front window overlaps the back one; a pin lies apart.
    in.picks.push_back({1, QRectF(20, 20, 20, 20), 0, solid({20, 20}, Qt::red), "front"});
    in.picks.push_back({2, QRectF(10, 10, 20, 20), 0, solid({20, 20}, Qt::blue), "back"});
    in.picks.push_back(
        {3, QRectF(60, 10, 10, 10), 0, solid({22, 22}, Qt::green), "mappingWindowByKelvo"});
    in.R = pickedFrame(in.picks, in.S);
    ASSERT_EQ(in.R, QRectF(0, 0, 80, 50)); // picks 6..74 x 6..44 with their shadows
    const CompositionLayout layout = layOutComposition(in);
    EXPECT_EQ(layout.size, QSizeF(68, 38));
    ASSERT_EQ(layout.pieces.size(), 3u);
    // The pin is drawn first, 6 larger on each side, and casts no shadow.
    EXPECT_EQ(layout.pieces[0].rect, QRectF(48, -2, 22, 22));
    EXPECT_FALSE(layout.pieces[0].shadow);
    EXPECT_EQ(layout.pieces[1].rect, QRectF(4, 4, 20, 20));
    EXPECT_EQ(layout.pieces[2].rect, QRectF(14, 14, 20, 20));
    EXPECT_TRUE(layout.pieces[2].shadow);

    const core::Picture p = composeCapture(in);
    ASSERT_EQ(p.pixels.size(), QSize(68, 38));
    // Rows count from the top: y-up 20 is row 38 - 20 - 1.
    EXPECT_EQ(p.pixels.pixel(20, 17), QColor(Qt::red).rgb());   // the overlap is the front's
    EXPECT_EQ(p.pixels.pixel(6, 31), QColor(Qt::blue).rgb());   // only the back window
    EXPECT_EQ(p.pixels.pixel(55, 30), QColor(Qt::green).rgb()); // the pin
    EXPECT_GT(qAlpha(p.pixels.pixel(36, 20)), 0);               // the front window's shadow
    EXPECT_EQ(qAlpha(p.pixels.pixel(45, 36)), 0);               // nothing there
}

TEST(CaptureComposer, pinOfOneWindowDropsTheShadowRoom)
{
    CompositionInput in;
    in.onlyClipCurrentWindow = true;
    in.mapImage = true;
    in.S = 18;
    in.picks.push_back({1, QRectF(100, 100, 30, 20), 0, solid({30, 20}, Qt::red), "w"});
    in.R = QRectF(100 - 24, 100 - 24, 30 + 48, 20 + 48);
    const core::Picture p = composeCapture(in);
    ASSERT_EQ(p.pixels.size(), QSize(30, 20));
    EXPECT_EQ(p.pixels.pixel(0, 0), QColor(Qt::red).rgb());
    EXPECT_EQ(p.pixels.pixel(29, 19), QColor(Qt::red).rgb());
}

TEST(CaptureComposer, doubleDensityKeepsEveryPixel)
{
    CompositionInput in = region(QRectF(30, 20, 50, 40), 0);
    QImage hi(400, 200, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 400; ++x)
            hi.setPixel(x, y, qRgb(x / 2, y, x % 2 ? 255 : 0));
    in.fullImage = core::Picture::withScale(hi, 2.0);
    in.scale = 2.0;
    const core::Picture p = composeCapture(in);
    ASSERT_EQ(p.pixels.size(), QSize(100, 80));
    EXPECT_EQ(p.pointSize, QSizeF(50, 40));
    EXPECT_EQ(p.pixels.pixel(0, 0), qRgb(30, 80, 0));
    EXPECT_EQ(p.pixels.pixel(1, 0), qRgb(30, 80, 255));
}

TEST(FinishRequest, aPinOnceAskedStaysThePinAndOnlyTheSaveButtonMakesItSound)
{
    // A finish refused on the wrong screen can be asked again by another
    // button: the destination and the shutter look back at what was asked.
    FinishRequest f;
    EXPECT_EQ(f.asked(), std::nullopt);
    EXPECT_EQ(f.destination(), FinishDestination::File);
    f.copy();
    EXPECT_EQ(f.destination(), FinishDestination::Clipboard);
    EXPECT_TRUE(f.shutterSounds(false));
    EXPECT_FALSE(f.shutterSounds(true)) << "a copy of a pin's mark-up is silent";
    f.save();
    EXPECT_EQ(f.destination(), FinishDestination::File);
    f.copy();
    EXPECT_EQ(f.destination(), FinishDestination::Clipboard);
    EXPECT_TRUE(f.shutterSounds(true)) << "the save button asked before the copy";

    f.pin();
    EXPECT_EQ(f.destination(), FinishDestination::Pin);
    EXPECT_FALSE(f.shutterSounds(false)) << "the pin button goes through save but is no save";
    f.copy();
    EXPECT_EQ(f.destination(), FinishDestination::Pin);
    EXPECT_FALSE(f.shutterSounds(false));
    f.save();
    EXPECT_EQ(f.destination(), FinishDestination::Pin);
    EXPECT_TRUE(f.shutterSounds(false));

    // After the window closed only a pin is forgotten; a new window
    // forgets everything.
    f.forgetPin();
    EXPECT_EQ(f.asked(), std::nullopt);
    f.save();
    f.forgetPin();
    EXPECT_EQ(f.asked(), FinishDestination::File);
    f.clear();
    EXPECT_EQ(f.asked(), std::nullopt);
    EXPECT_FALSE(f.shutterSounds(true));
}
