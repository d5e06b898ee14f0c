// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

// Pictures for the scrolling-capture tests: a tall page whose rows are all
// unlike each other, frames cut from it at known offsets with fixed parts
// around them, and a session driver that feeds frames as the wheel would.

#include "core/ImageView.h"
#include "scroll/logic/ScrollComposition.h"
#include "scroll/logic/ScrollShots.h"
#include "scroll/logic/ScrollState.h"

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace scrolltest {

struct Bgra
{
    std::uint8_t b = 255, g = 255, r = 255, a = 255;
};

// A tightly packed BGRA picture owned by the test.
struct Pixels
{
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> bytes;

    Pixels() = default;
    Pixels(int w, int h, Bgra fill = {})
        : width(w)
        , height(h)
        , bytes(std::size_t(w) * std::size_t(h) * 4)
    {
        for (std::size_t i = 0; i < bytes.size(); i += 4) {
            bytes[i] = fill.b;
            bytes[i + 1] = fill.g;
            bytes[i + 2] = fill.r;
            bytes[i + 3] = fill.a;
        }
    }

    std::uint8_t* at(int x, int y) { return bytes.data() + (std::size_t(y) * width + x) * 4; }
    const std::uint8_t* at(int x, int y) const
    {
        return bytes.data() + (std::size_t(y) * width + x) * 4;
    }
    void set(int x, int y, Bgra c)
    {
        std::uint8_t* p = at(x, y);
        p[0] = c.b;
        p[1] = c.g;
        p[2] = c.r;
        p[3] = c.a;
    }
    void setGray(int x, int y, std::uint8_t v) { set(x, y, {v, v, v, 255}); }
    void fillRow(int y, Bgra c)
    {
        for (int x = 0; x < width; ++x)
            set(x, y, c);
    }

    core::ImageView view() const
    {
        return {bytes.data(), width, height, std::ptrdiff_t(width) * 4, bytes.size()};
    }
    scroll::Frame frame() const { return *scroll::Frame::copyOf(view()); }

    // Rows [top, top + count) of this picture.
    Pixels rows(int top, int count) const
    {
        Pixels out(width, count);
        std::memcpy(out.bytes.data(), at(0, top), std::size_t(count) * width * 4);
        return out;
    }
    // Rows of other stacked under this one.
    void append(const Pixels& other)
    {
        bytes.insert(bytes.end(), other.bytes.begin(), other.bytes.end());
        height += other.height;
    }
    void paste(const Pixels& other, int x0, int y0)
    {
        for (int y = 0; y < other.height; ++y)
            std::memcpy(at(x0, y0 + y), other.at(0, y), std::size_t(other.width) * 4);
    }
    bool operator==(const Pixels& other) const = default;
};

inline Pixels pixelsOf(const scroll::Frame& frame)
{
    Pixels out(frame.width(), frame.height());
    for (int y = 0; y < frame.height(); ++y)
        std::memcpy(out.at(0, y), frame.row(y).data(), frame.row(y).size());
    return out;
}

// A page of noise: every row differs from every other in some pixel by far
// more than the matching tolerance, so each shift has exactly one answer.
inline Pixels texturedPage(int width, int height, std::uint32_t seed)
{
    Pixels page(width, height);
    std::mt19937 random(seed);
    std::uniform_int_distribution<int> shade(0, 255);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const auto v = std::uint8_t(shade(random));
            page.set(x, y, {v, std::uint8_t(255 - v), std::uint8_t(v / 2 + 64), 255});
        }
    }
    return page;
}

// The parts of a window that do not scroll.
struct Chrome
{
    Pixels header;   // full width, on top
    Pixels footer;   // full width, at the bottom
    Pixels leftBar;  // height of the frame, at the left
    Pixels rightBar; // height of the frame, at the right
};

// A window of the given size showing content rows from offset on, inside
// its fixed parts; content is as wide as the window less its side bars.
inline Pixels windowFrame(const Pixels& content, int offset, int height, const Chrome& chrome = {})
{
    const int width = content.width + chrome.leftBar.width + chrome.rightBar.width;
    Pixels frame(width, height);
    int y = 0;
    for (; y < chrome.header.height; ++y)
        std::memcpy(frame.at(0, y), chrome.header.at(0, y), std::size_t(width) * 4);
    const int contentRows = height - chrome.header.height - chrome.footer.height;
    for (int r = 0; r < contentRows; ++r, ++y) {
        if (chrome.leftBar.width > 0)
            std::memcpy(frame.at(0, y), chrome.leftBar.at(0, y),
                        std::size_t(chrome.leftBar.width) * 4);
        std::memcpy(frame.at(chrome.leftBar.width, y), content.at(0, offset + r),
                    std::size_t(content.width) * 4);
        if (chrome.rightBar.width > 0)
            std::memcpy(frame.at(width - chrome.rightBar.width, y), chrome.rightBar.at(0, y),
                        std::size_t(chrome.rightBar.width) * 4);
    }
    for (int r = 0; r < chrome.footer.height; ++r, ++y)
        std::memcpy(frame.at(0, y), chrome.footer.at(0, r), std::size_t(width) * 4);
    return frame;
}

// What the finished picture must look like: the expected rows, with the
// last point column left transparent.
inline Pixels withLostColumn(Pixels picture, int scale)
{
    for (int y = 0; y < picture.height; ++y)
        for (int x = picture.width - scale; x < picture.width; ++x)
            picture.set(x, y, {0, 0, 0, 0});
    return picture;
}

// Vertical stripes: every row alike, as a side bar or a scroll bar is.
inline Pixels stripes(int width, int height, std::uint32_t seed)
{
    const Pixels one = texturedPage(width, 1, seed);
    Pixels bar(width, height);
    for (int y = 0; y < height; ++y)
        bar.paste(one, 0, y);
    return bar;
}

// The picture a capture of a window with this chrome must come to: the
// header, every content row from the top to the last one shown, the footer.
inline Pixels expectedPicture(const Pixels& content, int contentRows, const Chrome& chrome,
                              int scale)
{
    const int width = content.width + chrome.leftBar.width + chrome.rightBar.width;
    Chrome noFixedRows{Pixels(width, 0), Pixels(width, 0), chrome.leftBar.rows(0, 1),
                       chrome.rightBar.rows(0, 1)};
    Pixels picture = chrome.header;
    for (int r = 0; r < contentRows; ++r) {
        const Pixels row = windowFrame(content.rows(r, 1), 0, 1, noFixedRows);
        picture.append(row);
    }
    picture.append(chrome.footer);
    return withLostColumn(picture, scale);
}

// A window with a 30-row header, a 20-row footer and side bars of 25 and
// 12 columns, whose header rows are all distinct.
inline Chrome windowChrome(int contentWidth, int frameHeight)
{
    const int width = contentWidth + 25 + 12;
    return {texturedPage(width, 30, 11), texturedPage(width, 20, 12), stripes(25, frameHeight, 13),
            stripes(12, frameHeight, 14)};
}

// A scrolling capture over frames taken elsewhere at the full capture
// area, the wheel turned one step down before each frame after the first.
struct Session
{
    scroll::ScrollState state;
    int scale = 1;
    std::string app;

    void start(const Pixels& first)
    {
        state.resetForSession();
        state.rectOfScreenShots =
            QRectF(0, 0, double(first.width) / scale, double(first.height) / scale);
        feed(first, 0);
        state.startScrollScreenshots = true;
    }

    scroll::FrameJudgement feed(const Pixels& frame, float wheel = -1)
    {
        state.totalDeltay += wheel;
        const scroll::Frame whole = frame.frame();
        const scroll::FrameSource source = [&](const QRectF& area) -> std::optional<scroll::Frame> {
            scroll::Frame cut = scroll::frameInArea(whole, state.rectOfScreenShots, area, scale);
            if (cut.isNull())
                return std::nullopt;
            return cut;
        };
        return scroll::screenShotsAtScrollScreenshots(state, source, {scale, app});
    }

    Pixels compose() const
    {
        const scroll::ComposeResult result =
            scroll::toImage(scroll::redrawScrollView(state, scale), scale);
        Pixels out;
        out.width = result.picture.width;
        out.height = result.picture.height;
        out.bytes = result.picture.pixels;
        return out;
    }
};

} // namespace scrolltest
