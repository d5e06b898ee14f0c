// SPDX-License-Identifier: GPL-3.0-or-later
// The settings box under a tool, clicked as a person clicks it on the
// overlay: a swatch recolours the active rectangle as an undo step, the
// largest dot widens the next one, and the own colour's swatch without a
// colour says so on the desktop and changes nothing.
#include "support/MarkUpFixture.h"

#include "toolbar/logic/SettingsBox.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>

using namespace e2e;
using namespace std::chrono_literals;

namespace {

// Swatch 3 as the overlay shows it.
const QColor kSwatch3(0x47, 0xa8, 0xd4);

bool near(QColor a, QColor b, int tolerance = 6)
{
    return std::abs(a.red() - b.red()) <= tolerance &&
           std::abs(a.green() - b.green()) <= tolerance &&
           std::abs(a.blue() - b.blue()) <= tolerance;
}

// "summary|body" of each of Kelvo's notifications the server (dunst) has
// shown; shown ones are closed first, so that its history holds them all.
QStringList kelvoNotifications()
{
    QStringList shown;
    for (const QVariantMap& n : kelvoNotificationHistory())
        shown << n.value(QStringLiteral("summary")).toString() + u'|' +
                     n.value(QStringLiteral("body")).toString();
    return shown;
}

class MarkUpSettings : public MarkUp
{
protected:
    MarkUpSettings()
        : MarkUp(TestDesktop::Options{.twoMonitors = true, .notifications = true})
    {}

    // A left click at a point of the rectangle tool's settings box.
    void clickInBox(QPointF inBox)
    {
        const QRectF box =
            toolbar::placeColorBoxInOverlay(u"square", QRectF(kRegion), QSizeF(kPrimary.size()));
        const QPoint p = (box.topLeft() + inBox).toPoint();
        x->movePointer(p.x(), p.y());
        barrier();
        x->click(1);
        barrier();
    }
    QColor onScreen(QPoint inRegion)
    {
        return x->pixel(kRegion.x() + inRegion.x(), kRegion.y() + inRegion.y());
    }
};

// How many pixels of `row` from `from` on have the colour `c`: the width
// of a stroke crossed there.
int runOf(const QImage& image, int row, int from, QColor c)
{
    int run = 0;
    for (int i = from; i < image.width(); ++i) {
        if (near(image.pixelColor(i, row), c, 10))
            ++run;
        else if (run > 0)
            break;
    }
    return run;
}

} // namespace

TEST_F(MarkUpSettings, ASwatchRecoloursTheActiveRectangleAsAnUndoStepAndTheLargestDotWidensTheNext)
{
    startKelvoWith(kPlain);
    const QRect box(QPoint(100, 80), QPoint(300, 240));
    const QPoint leftEdge(box.left(), box.top() + box.height() / 4);

    selectRegion();
    chooseTool("1", "square");
    strokeIn(box.topLeft(), box.bottomRight());
    ASSERT_TRUE(waitFor([&] { return isRed(onScreen(leftEdge)); }));

    // Swatch 3 while the rectangle is active: it takes the colour.
    clickInBox(toolbar::swatchFrame(3).center());
    EXPECT_TRUE(waitFor([&] { return near(onScreen(leftEdge), kSwatch3); }))
        << "the active rectangle kept its colour";
    // An undo step: Ctrl+Z shows the red again, Ctrl+Shift+Z the new one.
    typeKey("z", true);
    EXPECT_TRUE(waitFor([&] { return isRed(onScreen(leftEdge)); }));
    typeKey("z", true, true);
    EXPECT_TRUE(waitFor([&] { return near(onScreen(leftEdge), kSwatch3); }));

    // The own colour's swatch without a colour: a notification, nothing else.
    clickInBox(toolbar::swatchFrame(6).center());
    QStringList shown;
    EXPECT_TRUE(pumpUntil(
        [&] {
            shown = kelvoNotifications();
            return !shown.isEmpty();
        },
        20s))
        << kelvo->errors().toStdString();
    EXPECT_EQ(shown, QStringList{QStringLiteral(
                         "This color needs to be customized|RightMouse click, please")});
    EXPECT_TRUE(near(onScreen(leftEdge), kSwatch3));

    const QImage recoloured = copyAndRead({});
    EXPECT_TRUE(near(at(recoloured, leftEdge), kSwatch3))
        << at(recoloured, leftEdge).name().toStdString();

    // The largest dot: the next rectangle (in the tool's new colour) is 16
    // points wide.
    selectRegion();
    chooseTool("1", "square");
    clickInBox(toolbar::dotArea(2).center());
    strokeIn(box.topLeft(), box.bottomRight());
    const QImage wide = copyAndRead(last);
    const int row = box.center().y();
    EXPECT_EQ(runOf(wide, row, box.left() - 12, kSwatch3), 16);
    EXPECT_EQ(runOf(wide, row, box.right() - 12, kSwatch3), 16);
}

TEST_F(MarkUpSettings, TheOwnColoursPanelStandsAboveTheOverlayAndTakesTheKeysOnlyUnderThePointer)
{
    startKelvoWith(kPlain);
    selectRegion();
    chooseTool("1", "square");
    const QRectF colorBox =
        toolbar::placeColorBoxInOverlay(u"square", QRectF(kRegion), QSizeF(kPrimary.size()));
    // The panel opens right of the box, its top with the box's.
    const QPoint inPanel = (colorBox.topRight() + QPointF(40, 30)).toPoint();
    const QColor before = x->pixel(inPanel.x(), inPanel.y());

    x->movePointer(int(colorBox.x() + toolbar::swatchFrame(6).center().x()),
                   int(colorBox.y() + toolbar::swatchFrame(6).center().y()));
    barrier();
    x->click(3);
    ASSERT_TRUE(waitFor([&] { return x->pixel(inPanel.x(), inPanel.y()) != before; }))
        << "no panel over the overlay";
    EXPECT_FALSE(overlaysGone()) << "the right click ended the capture";
    EXPECT_TRUE(x->keyboardGrabbedByOther());

    // Over the panel Escape closes the panel, not the capture.
    x->movePointer(inPanel.x(), inPanel.y());
    barrier();
    x->movePointer(inPanel.x() + 1, inPanel.y());
    barrier();
    typeKey("Escape");
    EXPECT_TRUE(waitFor([&] { return x->pixel(inPanel.x(), inPanel.y()) == before; }))
        << "the panel stayed";
    EXPECT_FALSE(waitFor([&] { return overlaysGone(); }, 1s)) << "Escape ended the capture";

    // Back over the overlay the keys are the capture's again.
    x->movePointer(kRegion.center().x(), kRegion.center().y());
    barrier();
    const QImage copied = copyAndRead({});
    EXPECT_EQ(copied.size(), kRegion.size());
}
