// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QRectF>

#include <vector>

// The filtered copies of a screen that mosaic and blur patches are cut
// from. They are made once per selection from a work image at half the
// screen's point size, so that a drag only crops and stretches: ten block
// mosaics (levels 1 to 10) and ten Gaussian blurs (radii 0 to 13.5 in
// steps of 1.5).
namespace annotation::mosaic {

inline constexpr int kLevels = 10;

// The screen's picture at half its point size: what every copy is made of.
[[nodiscard]] QImage workImageOf(const QImage& screen, double devicePixelRatio);

// Each `level` by `level` block takes the colour of its top-left pixel, no
// averaging; the last row and the last column stay as they are. Level 1
// (and below) changes nothing.
[[nodiscard]] QImage blockMosaic(const QImage& work, int level);

// A Gaussian blur of standard deviation `radius` pixels, cropped to the
// image (the edge pixels stand in for what lies beyond). Radius 0 is the
// image itself.
[[nodiscard]] QImage gaussianBlured(const QImage& work, double radius);

// The blur radius of copy 10 + i, for i from 0 to 9.
[[nodiscard]] constexpr double blurRadius(int i)
{
    return i * 1.5;
}

// The twenty copies: 0 to 9 the block mosaics of level 1 to 10, 10 to 19
// the blurs. Made on as many threads as the machine has; all or nothing.
// A blur of radius r is kept at 1/k of the work image's size, k the
// largest power of two that leaves r / k at least 1.5, and blurred there
// by r / k: a blur has no detail that the smaller copy loses, and the
// larger radii cost less than the small.
class FilteredCopies
{
public:
    FilteredCopies() = default;
    explicit FilteredCopies(const QImage& work);

    [[nodiscard]] bool ready() const { return m_images.size() == 2 * kLevels; }
    // The copy a stroke of `size` cuts from: the mosaic of that level, or
    // the blur; none for a size outside 1 to 10 or before the copies exist.
    [[nodiscard]] const QImage* forStroke(int size, bool selectedMosaic) const;
    [[nodiscard]] const QImage& at(int index) const
    {
        return m_images.at(static_cast<std::size_t>(index));
    }
    // The patch of a stroke from `source` (work-image pixels, see
    // patchSourceRect); a null image when there is none.
    [[nodiscard]] QImage patch(int size, bool selectedMosaic, const QRectF& source) const;

private:
    QSize m_workSize;
    std::vector<QImage> m_images;
};

// The part of the work image a patch shows, in work-image pixels with the
// origin at the top left: `rect` is the patch in points of a screen
// `screenHeight` points high, y up, and `size` the stroke's. A mosaic's
// source lies `size` work pixels right and down of the patch itself, which
// lines its blocks up with the grid of the copy.
[[nodiscard]] QRectF patchSourceRect(const QRectF& rect, int size, double screenHeight,
                                     bool selectedMosaic);

// The pixels of `copy` under `source`, grown to whole pixels and kept
// inside the image; a null image when nothing is left.
[[nodiscard]] QImage cutPatch(const QImage& copy, const QRectF& source);

} // namespace annotation::mosaic
