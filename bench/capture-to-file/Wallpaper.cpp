// SPDX-License-Identifier: GPL-3.0-or-later
// Puts a photo-like picture on the root window of $DISPLAY: a sky that
// fades, hills of layered noise and a fine grain, as a camera would give,
// so that capture tools meet a desktop that deflate cannot flatten. The
// pixels are the same on every run; the picture stays after this exits.
//
//   wallpaper
#include <xcb/xcb.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

std::uint32_t hash(std::uint32_t x, std::uint32_t y, std::uint32_t seed)
{
    std::uint32_t h = x * 374761393u + y * 668265263u + seed * 2246822519u;
    h = (h ^ (h >> 13)) * 1274126177u;
    return h ^ (h >> 16);
}

// Smoothly interpolated lattice noise in [0, 1].
double valueNoise(double x, double y, std::uint32_t seed)
{
    const auto xi = static_cast<std::uint32_t>(std::floor(x));
    const auto yi = static_cast<std::uint32_t>(std::floor(y));
    const double fx = x - std::floor(x);
    const double fy = y - std::floor(y);
    const double sx = fx * fx * (3 - 2 * fx);
    const double sy = fy * fy * (3 - 2 * fy);
    auto at = [&](std::uint32_t dx, std::uint32_t dy) {
        return (hash(xi + dx, yi + dy, seed) & 0xffff) / 65535.0;
    };
    const double top = at(0, 0) + (at(1, 0) - at(0, 0)) * sx;
    const double bottom = at(0, 1) + (at(1, 1) - at(0, 1)) * sx;
    return top + (bottom - top) * sy;
}

double layered(double x, double y, std::uint32_t seed, int octaves)
{
    double sum = 0;
    double amplitude = 0.5;
    for (int i = 0; i < octaves; ++i) {
        sum += amplitude * valueNoise(x, y, seed + static_cast<std::uint32_t>(i));
        x *= 2.03;
        y *= 2.03;
        amplitude *= 0.5;
    }
    return sum;
}

std::uint8_t clamp8(double v)
{
    return static_cast<std::uint8_t>(std::clamp(v, 0.0, 255.0));
}

} // namespace

int main()
{
    int screenNumber = 0;
    xcb_connection_t* c = xcb_connect(nullptr, &screenNumber);
    if (xcb_connection_has_error(c)) {
        std::fprintf(stderr, "wallpaper: cannot connect to the X server\n");
        return 1;
    }
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
    for (int i = 0; i < screenNumber; ++i)
        xcb_screen_next(&it);
    xcb_screen_t* screen = it.data;
    const int w = screen->width_in_pixels;
    const int h = screen->height_in_pixels;

    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(w) * static_cast<std::size_t>(h));
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const double u = x / 1920.0;
            const double v = y / 1080.0;
            const double ridge = 0.45 + 0.18 * layered(u * 3, 0.5, 7, 5);
            double r, g, b;
            if (v < ridge) {
                const double cloud = layered(u * 6, v * 10, 11, 6);
                const double t = v / ridge;
                r = 90 + 90 * t + 80 * cloud;
                g = 140 + 60 * t + 70 * cloud;
                b = 220 + 20 * t + 30 * cloud;
            } else {
                const double ground = layered(u * 24, v * 24, 23, 7);
                const double shade = 0.6 + 0.6 * (v - ridge);
                r = (60 + 110 * ground) * shade;
                g = (90 + 120 * ground) * shade;
                b = (40 + 60 * ground) * shade;
            }
            const double grain =
                static_cast<double>(
                    hash(static_cast<std::uint32_t>(x), static_cast<std::uint32_t>(y), 99) % 9) -
                4.0;
            pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(w) +
                   static_cast<std::size_t>(x)] = (std::uint32_t{clamp8(r + grain)} << 16) |
                                                  (std::uint32_t{clamp8(g + grain)} << 8) |
                                                  clamp8(b + grain);
        }
    }

    const xcb_pixmap_t pixmap = xcb_generate_id(c);
    xcb_create_pixmap(c, screen->root_depth, pixmap, screen->root, static_cast<std::uint16_t>(w),
                      static_cast<std::uint16_t>(h));
    const xcb_gcontext_t gc = xcb_generate_id(c);
    xcb_create_gc(c, gc, pixmap, 0, nullptr);
    // Bands small enough for any server's request limit.
    const int band = std::max(1, static_cast<int>(200000 / (4 * w)));
    for (int y = 0; y < h; y += band) {
        const int rows = std::min(band, h - y);
        xcb_put_image(
            c, XCB_IMAGE_FORMAT_Z_PIXMAP, pixmap, gc, static_cast<std::uint16_t>(w),
            static_cast<std::uint16_t>(rows), 0, static_cast<std::int16_t>(y), 0,
            screen->root_depth,
            static_cast<std::uint32_t>(rows) * static_cast<std::uint32_t>(w) * 4,
            reinterpret_cast<const std::uint8_t*>(pixels.data() + static_cast<std::size_t>(y) *
                                                                      static_cast<std::size_t>(w)));
    }
    const std::uint32_t background = pixmap;
    xcb_change_window_attributes(c, screen->root, XCB_CW_BACK_PIXMAP, &background);
    xcb_clear_area(c, 0, screen->root, 0, 0, 0, 0);
    xcb_set_close_down_mode(c, XCB_CLOSE_DOWN_RETAIN_PERMANENT);
    // A round trip, so that every request above has been carried out.
    std::free(xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
    const bool ok = !xcb_connection_has_error(c);
    xcb_disconnect(c);
    return ok ? 0 : 1;
}
