// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/logic/StrokeEdit.h"

#include <algorithm>

namespace annotation::edit {

namespace {

namespace st = stroketype;

double f(double value)
{
    return static_cast<float>(value);
}

bool isLineFamily(int type)
{
    return type == st::Line || type == st::Arrow;
}

// A mosaic's offset, kept so the patch stays inside R less the margin; the
// high side is tested last, so a patch too big for the room ends against it.
QPointF clampedMosaicOffset(const Stroke& s, QPointF d, const QRectF& R)
{
    const double x1 = f(s.X1.value_or(0));
    const double y1 = f(s.Y1.value_or(0));
    const double x2 = f(s.X2.value_or(0));
    const double y2 = f(s.Y2.value_or(0));
    double dx = d.x();
    double dy = d.y();
    if (R.x() + kMosaicMargin > x1 + dx)
        dx = R.x() + kMosaicMargin - x1;
    if (x2 + dx > R.x() + R.width() - kMosaicMargin)
        dx = R.x() + R.width() - kMosaicMargin - x2;
    if (R.y() + kMosaicMargin > y1 + dy)
        dy = R.y() + kMosaicMargin - y1;
    if (y2 + dy > R.y() + R.height() - kMosaicMargin)
        dy = R.y() + R.height() - kMosaicMargin - y2;
    return {dx, dy};
}

void offsetBy(Stroke& s, QPointF d)
{
    // Missing corners read as zero: a pencil gets the bare offset, which
    // means nothing, as its points are what count.
    s.X1 = f(s.X1.value_or(0) + d.x());
    s.Y1 = f(s.Y1.value_or(0) + d.y());
    s.X2 = f(s.X2.value_or(0) + d.x());
    s.Y2 = f(s.Y2.value_or(0) + d.y());
    if (s.type == st::PencilPen) {
        for (QPointF& point : s.allPoints)
            point += d;
    }
}

} // namespace

QPointF dragOffset(const Stroke& s)
{
    if (!s.moveToX)
        return {};
    return {f(f(*s.moveToX) - f(s.moveX.value_or(0))),
            f(f(s.moveToY.value_or(0)) - f(s.moveY.value_or(0)))};
}

QRectF getNewRectOfResizeAllStroke(const Stroke& s, int which, const QRectF& R)
{
    double x1 = f(s.X1.value_or(0));
    double y1 = f(s.Y1.value_or(0));
    double x2 = f(s.X2.value_or(0));
    double y2 = f(s.Y2.value_or(0));
    if (s.moveToX) {
        const QPointF d = dragOffset(s);
        const double dx = d.x();
        const double dy = d.y();
        if (isLineFamily(s.type)) {
            if (which == 1) {
                x1 += dx;
                y1 += dy;
            } else if (which == 2) {
                x2 += dx;
                y2 += dy;
            }
        } else {
            switch (which) {
            case 1:
                x1 += dx;
                y1 += dy;
                break;
            case 2:
                y1 += dy;
                break;
            case 3:
                x2 += dx;
                y1 += dy;
                break;
            case 4:
                x2 += dx;
                break;
            case 5:
                x2 += dx;
                y2 += dy;
                break;
            case 6:
                y2 += dy;
                break;
            case 7:
                x1 += dx;
                y2 += dy;
                break;
            case 8:
                x1 += dx;
                break;
            default:
                break;
            }
        }
    }
    if (s.type == st::Mosaic) {
        const auto clampInto = [](double v, double low, double high) {
            if (v < low)
                v = low;
            if (v > high)
                v = high;
            return v;
        };
        const double left = R.x() + kMosaicMargin;
        const double right = R.x() + R.width() - kMosaicMargin;
        const double bottom = R.y() + kMosaicMargin;
        const double top = R.y() + R.height() - kMosaicMargin;
        x1 = clampInto(x1, left, right);
        x2 = clampInto(x2, left, right);
        y1 = clampInto(y1, bottom, top);
        y2 = clampInto(y2, bottom, top);
    }
    return QRectF(std::min(x1, x2), std::min(y1, y2), std::max(x1, x2) - std::min(x1, x2),
                  std::max(y1, y2) - std::min(y1, y2));
}

void dragMove(Stroke& s, QPointF p, const QRectF& R)
{
    s.moveToX = p.x();
    s.moveToY = p.y();
    if (s.type != st::Mosaic && s.type != st::Highlight)
        return;
    QPointF d = dragOffset(s);
    if (s.type == st::Mosaic)
        d = clampedMosaicOffset(s, d, R);
    const double x1 = f(s.X1.value_or(0));
    const double y1 = f(s.Y1.value_or(0));
    s.Rect = QRectF(x1 + d.x(), y1 + d.y(), f(s.X2.value_or(0)) - x1, f(s.Y2.value_or(0)) - y1);
}

void dragResize(Stroke& s, QPointF p, int which, const QRectF& R)
{
    s.moveToX = p.x();
    s.moveToY = p.y();
    if (s.type == st::Mosaic || s.type == st::Highlight)
        s.Rect = getNewRectOfResizeAllStroke(s, which, R);
}

void foldMove(Stroke& s, QPointF p, const QRectF& R)
{
    QPointF d(f(f(p.x()) - f(s.moveX.value_or(0))), f(f(p.y()) - f(s.moveY.value_or(0))));
    if (s.type == st::Mosaic)
        d = clampedMosaicOffset(s, d, R);
    offsetBy(s, d);
}

void foldResize(Stroke& s, int which, const QRectF& R)
{
    if (isLineFamily(s.type)) {
        const QPointF d = dragOffset(s);
        if (which == 1) {
            s.X1 = f(s.X1.value_or(0) + d.x());
            s.Y1 = f(s.Y1.value_or(0) + d.y());
        } else {
            s.X2 = f(s.X2.value_or(0) + d.x());
            s.Y2 = f(s.Y2.value_or(0) + d.y());
        }
        return;
    }
    const QRectF r = getNewRectOfResizeAllStroke(s, which, R);
    const double x1 = f(r.x() + r.width() / 2 - 0.5 * f(r.width()));
    const double y1 = f(r.y() + r.height() / 2 - 0.5 * f(r.height()));
    s.X1 = x1;
    s.Y1 = y1;
    s.X2 = f(x1 + r.width());
    s.Y2 = f(y1 + r.height());
}

Stroke shownWhileEditing(const Stroke& s, StrokeGesture gesture, int which)
{
    Stroke shown = s;
    if (!s.moveToX)
        return shown;
    switch (gesture) {
    case StrokeGesture::Idle:
    case StrokeGesture::Move: {
        const QPointF d = dragOffset(s);
        if (shown.X1)
            shown.X1 = *shown.X1 + d.x();
        if (shown.Y1)
            shown.Y1 = *shown.Y1 + d.y();
        if (shown.X2)
            shown.X2 = *shown.X2 + d.x();
        if (shown.Y2)
            shown.Y2 = *shown.Y2 + d.y();
        for (QPointF& point : shown.allPoints)
            point += d;
        break;
    }
    case StrokeGesture::Resize:
        if (s.type == st::Square || s.type == st::Ellipse || isLineFamily(s.type)) {
            // The pointer holds one handle; a box shows ordered.
            if (isLineFamily(s.type)) {
                foldResize(shown, which, QRectF());
            } else {
                const QRectF r = getNewRectOfResizeAllStroke(s, which, QRectF());
                shown.X1 = r.left();
                shown.Y1 = r.top();
                shown.X2 = r.right();
                shown.Y2 = r.bottom();
            }
        }
        break;
    case StrokeGesture::Draw:
        break;
    }
    return shown;
}

bool refreshBoxSizeAndDrawRect(StrokeState& state, const QColor& color, int size)
{
    if (!state.dicOfCurrentStroke)
        return false;
    Stroke& s = *state.dicOfCurrentStroke;
    if (static_cast<int>(s.size) == size && s.color == color)
        return false;
    s.color = color;
    s.size = size;
    state.append();
    return true;
}

bool followOption(StrokeState& state, QStringView key, bool on)
{
    if (!state.dicOfCurrentStroke)
        return false;
    Stroke& s = *state.dicOfCurrentStroke;
    namespace st = stroketype;
    if (s.type == st::Square && key == u"filledOfSquare")
        s.filledOfSquare = on;
    else if (s.type == st::Square && key == u"enableRoundOfSquare")
        s.enableRoundOfSquare = on;
    else if (s.type == st::Ellipse && key == u"filledOfEllipse")
        s.filledOfEllipse = on;
    else if (s.type == st::Arrow && key == u"normalTypeOfArrow")
        s.normalTypeOfArrow = on ? QStringLiteral("1") : QStringLiteral("0");
    else
        return false;
    state.append();
    return true;
}

} // namespace annotation::edit
