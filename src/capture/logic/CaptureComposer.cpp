// SPDX-License-Identifier: GPL-3.0-or-later
#include "capture/logic/CaptureComposer.h"

#include "core/BubblePath.h"
#include "core/Shadow.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace capture {

namespace {

constexpr qreal kBand = 6;         // the crop border's band around the selection
constexpr qreal kFilletRadius = 5; // a rounded region's corners
constexpr qreal kPinGrowth = 6;    // a pin's window is larger than its picture's place

bool isPin(const PickedWindow& p)
{
    return p.kCGWindowName == QLatin1String("mappingWindowByKelvo");
}

// A rectangle of the picture's y-up plane in QPainter's y-down one.
QRectF flipped(const QRectF& r, qreal height)
{
    return {r.x(), height - r.y() - r.height(), r.width(), r.height()};
}

// Frozen pictures of a 24-bit screen leave the alpha byte as the X server
// sent it, often 0, which painting would read as transparent.
QImage opaqueSource(const QImage& image)
{
    return image.format() == QImage::Format_RGB32
               ? image.convertToFormat(QImage::Format_ARGB32_Premultiplied)
               : image;
}

} // namespace

CompositionLayout layOutComposition(const CompositionInput& in)
{
    CompositionLayout out;
    QRectF R = in.R;
    const qreal S = in.S;
    // A pin of one window has no room for a shadow.
    if (in.onlyClipCurrentWindow && in.mapImage && in.picks.size() == 1)
        R.adjust(S, S, -S, -S);

    if (!in.onlyClipCurrentWindow) {
        const QSizeF selection(R.width() - 2 * kBand, R.height() - 2 * kBand);
        out.regionRadius = in.fillet && !in.mapImage ? kFilletRadius : 0;
        // The screen drawn so that the selection lands at the origin.
        out.regionSource =
            QRectF(-kBand - R.x(), -kBand - R.y(), in.windowSize.width(), in.windowSize.height());
        if (!in.mapImage)
            R.adjust(-S, -S, S, S);
        out.size = QSizeF(R.width() - 2 * kBand, R.height() - 2 * kBand);
        // A pin keeps no shadow, so its region sits at the origin.
        const qreal origin = in.mapImage ? 0 : S;
        out.pieces.push_back({QRectF(QPointF(origin, origin), selection), S > 0 && !in.mapImage});
        out.marks = QRectF(QPointF(origin, origin), selection);
        return out;
    }

    out.size = QSizeF(R.width() - 2 * kBand, R.height() - 2 * kBand);
    // Back to front: the frontmost window is drawn last.
    for (auto it = in.picks.rbegin(); it != in.picks.rend(); ++it) {
        QRectF d = it->rect.translated(-R.x() - kBand, -R.y() - kBand);
        if (isPin(*it))
            d.adjust(-kPinGrowth, -kPinGrowth, kPinGrowth, kPinGrowth);
        out.pieces.push_back({d, S > 0 && !in.mapImage && !isPin(*it)});
    }
    out.marks = QRectF(QPointF(S, S), QSizeF(out.size.width() - 2 * S, out.size.height() - 2 * S));
    return out;
}

QRectF marksArea(const CompositionInput& in)
{
    const CompositionLayout layout = layOutComposition(in);
    // The marks sit centred in the frame: a region's band, a window's band
    // and shadow room, are cut off evenly on every side.
    const qreal dx = (in.R.width() - layout.marks.width()) / 2;
    const qreal dy = (in.R.height() - layout.marks.height()) / 2;
    return in.R.adjusted(dx, dy, -dx, -dy);
}

core::Picture composeCapture(const CompositionInput& in)
{
    const CompositionLayout layout = layOutComposition(in);
    if (layout.size.width() < 1 || layout.size.height() < 1)
        return {};
    const QSize pixels(qRound(layout.size.width() * in.scale),
                       qRound(layout.size.height() * in.scale));
    QImage canvas(pixels, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    canvas.setDevicePixelRatio(in.scale);
    const qreal h = layout.size.height();
    const qreal blur = 1.1 * in.S;

    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    if (!in.onlyClipCurrentWindow) {
        const CompositionLayout::Piece& piece = layout.pieces.front();
        // The region alone first, rounded, then placed with its shadow.
        QImage region(qRound(piece.rect.width() * in.scale), qRound(piece.rect.height() * in.scale),
                      QImage::Format_ARGB32_Premultiplied);
        region.fill(Qt::transparent);
        region.setDevicePixelRatio(in.scale);
        {
            QPainter rp(&region);
            const qreal rh = piece.rect.height();
            if (layout.regionRadius > 0) {
                QPainterPath bubble;
                core::makeBubble(bubble, QRectF(QPointF(0, 0), piece.rect.size()),
                                 layout.regionRadius, layout.regionRadius);
                rp.setRenderHint(QPainter::Antialiasing);
                rp.setClipPath(QTransform(1, 0, 0, -1, 0, rh).map(bubble));
            }
            rp.drawImage(flipped(layout.regionSource, rh), opaqueSource(in.fullImage.pixels));
        }
        const QRectF target = flipped(piece.rect, h);
        if (piece.shadow)
            core::drawWithShadow(painter, target, region, in.shadowColour, blur);
        else
            painter.drawImage(target, region);
    } else {
        for (std::size_t i = 0; i < layout.pieces.size(); ++i) {
            const CompositionLayout::Piece& piece = layout.pieces[i];
            const QImage image =
                opaqueSource(in.picks[in.picks.size() - 1 - i].KCGWindowImage.pixels);
            const QRectF target = flipped(piece.rect, h);
            if (piece.shadow)
                core::drawWithShadow(painter, target, image, in.shadowColour, blur);
            else
                painter.drawImage(target, image);
        }
    }
    if (!in.marks.isNull())
        painter.drawImage(flipped(layout.marks, h), in.marks);
    painter.end();
    canvas.setDevicePixelRatio(1.0);
    return core::Picture::withScale(canvas, in.scale);
}

} // namespace capture
