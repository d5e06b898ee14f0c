// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once
// A capture marked up as a person does it: a region dragged out, tools
// chosen by their keys, strokes dragged inside it, and the picture that
// Return leaves on the clipboard.
#include "support/CaptureFixture.h"

#include "toolbar/logic/ButtonBox.h"

#include <QImage>

namespace e2e {

inline const QColor kDesktop(0x80, 0x80, 0x80);
inline const QMap<QString, QString> kPlain{
    {QStringLiteral("needShadowOfnotSingleWindow"), QStringLiteral("NO")},
    {QStringLiteral("needFilletOfnotSingleWindow"), QStringLiteral("NO")}};
inline const QRect kRegion(300, 200, 480, 360);
// The stroke's own red: a settled stroke also carries a skirt, a 1% veil a
// little wider than the stroke, which takes the red down by a few levels.
inline bool isRed(QColor c)
{
    return c.red() >= 250 && c.green() <= 2 && c.blue() <= 2;
}
// How far from its outline a 3-point stroke (and its 7-point skirt, with
// the antialiased pixel next to it) may change the picture.
inline constexpr int kStrokeBand = 5;

class MarkUp : public CaptureFixture
{
protected:
    // The desktop's options (a notification server, say) as the capture's.
    using CaptureFixture::CaptureFixture;

    void SetUp() override
    {
        CaptureFixture::SetUp();
        if (HasFatalFailure())
            return;
        x->setRootColor(kDesktop);
    }

    // A region selected by a drag, with its tool bar shown.
    void selectRegion(const QRect& region = kRegion)
    {
        x->movePointer(region.x() - 50, region.y() - 50);
        triggerCapture();
        ASSERT_TRUE(waitFor([&] { return overlaysUp(); })) << kelvo->errors().toStdString();
        drag(region.topLeft(), region.topLeft() + QPoint(region.width(), region.height()), 12);
        barrier();
    }

    // A stroke dragged between two points of the region (region-local).
    void strokeIn(QPoint from, QPoint to, const QRect& region = kRegion)
    {
        drag(region.topLeft() + from, region.topLeft() + to, 12);
    }

    void typeKey(const char* key, bool withControl = false, bool withShift = false)
    {
        if (withControl)
            x->pressKey("Control_L");
        x->tapKey(key, withShift);
        if (withControl)
            x->releaseKey("Control_L");
        barrier();
    }

    // A tool's key, typed, and seen taken: its button on the bar shows
    // pressed.
    void chooseTool(const char* key, const char* tool, const QRect& region = kRegion)
    {
        const QRectF bar = toolbar::placeButtonBox(QRectF(region), QSizeF(1920, 1080));
        const QPointF centre = toolbar::buttonCentre(bar, QString::fromLatin1(tool));
        const QRect button(centre.toPoint() - QPoint(12, 12), QSize(24, 24));
        const QImage before = x->grabRoot(button);
        typeKey(key);
        EXPECT_TRUE(waitFor([&] { return x->grabRoot(button) != before; }))
            << "the " << tool << " button did not show pressed";
    }

    // Return copies; the clipboard then holds a picture other than `before`.
    QImage copyAndRead(const QByteArray& before)
    {
        typeKey("Return");
        EXPECT_TRUE(waitFor([&] { return overlaysGone(); })) << kelvo->errors().toStdString();
        QByteArray png;
        EXPECT_TRUE(waitFor([&] {
            png = x->clipboardPng();
            return !png.isEmpty() && png != before;
        }));
        last = png;
        return QImage::fromData(png, "PNG").convertToFormat(QImage::Format_RGB32);
    }

    QByteArray last;
};

inline QColor at(const QImage& image, QPoint p)
{
    return image.pixelColor(p);
}

// The pixels of `image` farther than `band` from the outline of `box`
// that differ from `screen`.
inline int changedAwayFrom(const QImage& image, const QImage& screen, const QRect& box, int band)
{
    int changed = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool nearVertical =
                (std::abs(x - box.left()) <= band || std::abs(x - box.right()) <= band) &&
                y >= box.top() - band && y <= box.bottom() + band;
            const bool nearHorizontal =
                (std::abs(y - box.top()) <= band || std::abs(y - box.bottom()) <= band) &&
                x >= box.left() - band && x <= box.right() + band;
            if (!nearVertical && !nearHorizontal && image.pixel(x, y) != screen.pixel(x, y))
                ++changed;
        }
    }
    return changed;
}

} // namespace e2e
