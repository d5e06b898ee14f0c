// SPDX-License-Identifier: GPL-3.0-or-later
#include "annotation/render/MosaicPainter.h"

#include "annotation/logic/StrokeGeometry.h"

#include <QPainter>

#include <optional>

namespace annotation {

namespace {

namespace st = stroketype;

class MosaicPainter
{
public:
    MosaicPainter(QPainter& painter, const MosaicScene& scene)
        : m_painter(painter)
        , m_scene(scene)
    {}

    // The patch's rectangle in the painter's top-left points; none while
    // it has no width.
    [[nodiscard]] std::optional<QRectF> placeOf(const Stroke& s) const
    {
        if (!s.Rect)
            return std::nullopt;
        const QRectF r = s.Rect->normalized();
        if (r.width() == 0)
            return std::nullopt;
        return QRectF(r.x(), m_scene.screenHeight - r.y() - r.height(), r.width(), r.height());
    }

    void drawPatch(const Stroke& s, const QRectF& place)
    {
        if (m_scene.copies == nullptr)
            return;
        const bool blocks = s.selectedMosaic.value_or(1) != 0;
        const int size = static_cast<int>(s.size);
        const QImage patch = m_scene.copies->patch(
            size, blocks, mosaic::patchSourceRect(*s.Rect, size, m_scene.screenHeight, blocks));
        if (patch.isNull())
            return;
        m_painter.save();
        m_painter.setRenderHint(QPainter::SmoothPixmapTransform, !blocks);
        m_painter.drawImage(place, patch);
        m_painter.restore();
    }

    void drawFrame(const QRectF& place)
    {
        QPen pen(QColor::fromRgbF(0.5f, 0.5f, 0.5f), 2);
        pen.setDashPattern({2.5, 2.5, 2.5, 2.5}); // 5 points on, 5 off at width 2
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setPen(pen);
        m_painter.setBrush(Qt::NoBrush);
        m_painter.drawRect(place);
        m_painter.restore();
    }

    void drawHandles(const QRectF& place)
    {
        const std::vector<QRectF> handles =
            geometry::calculateAllNeededHandleSquareRects(place, st::Mosaic);
        QColor outer = QColor::fromRgbF(0.0f, 0.5098039f, 0.8352941f);
        outer.setAlphaF(0.85f);
        QColor inner(Qt::white);
        inner.setAlphaF(0.95f);
        m_painter.save();
        m_painter.setRenderHint(QPainter::Antialiasing);
        m_painter.setPen(Qt::NoPen);
        for (int i = 1; i <= 8; ++i) {
            const QRectF& box = handles[static_cast<std::size_t>(i)];
            m_painter.setBrush(outer);
            m_painter.drawEllipse(box);
            m_painter.setBrush(inner);
            m_painter.drawEllipse(box.adjusted(1, 1, -1, -1));
        }
        m_painter.restore();
    }

private:
    QPainter& m_painter;
    const MosaicScene& m_scene;
};

} // namespace

void paintMosaicLayer(QPainter& painter, const StrokeState& state, const MosaicScene& scene)
{
    MosaicPainter mosaic(painter, scene);
    for (const Stroke& s : state.currentStrokes(true)) {
        if (s.type != st::Mosaic)
            continue;
        const std::optional<QRectF> place = mosaic.placeOf(s);
        if (!place)
            continue;
        mosaic.drawPatch(s, *place);
        if (s.identity() == scene.listOfmouseInMosaic && !scene.startScreenShot)
            mosaic.drawFrame(*place);
    }
    if (!state.dicOfCurrentStroke || state.dicOfCurrentStroke->type != st::Mosaic)
        return;
    const std::optional<QRectF> place = mosaic.placeOf(*state.dicOfCurrentStroke);
    if (!place)
        return;
    mosaic.drawPatch(*state.dicOfCurrentStroke, *place);
    if (scene.startScreenShot)
        return;
    mosaic.drawFrame(*place);
    mosaic.drawHandles(*place);
}

} // namespace annotation
