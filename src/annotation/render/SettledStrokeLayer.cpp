// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/render/SettledStrokeLayer.h"

#include "annotation/render/StrokePainter.h"

#include <QPainter>

#include <cmath>

namespace annotation {

const QImage& SettledStrokeLayer::picture(const StrokeState& state, QSizeF size, double scale,
                                          QPointF origin)
{
    const QSize pixels(static_cast<int>(std::ceil(size.width() * scale)),
                       static_cast<int>(std::ceil(size.height() * scale)));
    std::vector<Stroke> strokes = state.currentStrokes(true);
    const bool same = !m_picture.isNull() && m_picture.size() == pixels &&
                      m_picture.devicePixelRatio() == scale && m_origin == origin &&
                      strokes == m_strokes;
    if (same)
        return m_picture;
    if (pixels.isEmpty()) {
        clear();
        return m_picture;
    }
    if (m_picture.size() != pixels)
        m_picture = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    if (m_picture.isNull()) {
        // Out of memory: nothing cached, so that nothing stale is shown.
        m_strokes.clear();
        return m_picture;
    }
    m_picture.setDevicePixelRatio(scale);
    m_picture.fill(Qt::transparent);
    QPainter painter(&m_picture);
    StrokePainter::yUp(painter, size.height());
    StrokePainter(painter, origin).paintSettled(strokes);
    painter.end();
    m_strokes = std::move(strokes);
    m_origin = origin;
    return m_picture;
}

void SettledStrokeLayer::clear()
{
    m_picture = QImage();
    m_strokes.clear();
}

} // namespace annotation
