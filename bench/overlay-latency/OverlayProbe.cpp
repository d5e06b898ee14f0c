// SPDX-License-Identifier: GPL-3.0-or-later
// Measures, from a separate X client, how long a screenshot tool takes from
// its trigger to an overlay that is mapped and painted over the whole root:
// MapNotify of its new top-level windows, then the first damage (the tool's
// first frame) on each, until the painted windows cover every pixel.
//
//   overlay_probe RUNS -- COMMAND [ARGS...]
//
// Prints one line per run ("map MS paint MS") and a summary line
// "median map MS paint MS". Each run ends the overlay with Escape (XTest)
// and waits until its windows are gone.
#include <X11/keysym.h>
#include <xcb/damage.h>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <poll.h>
#include <set>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

struct Rect
{
    int x, y, w, h;
};

struct Probe
{
    xcb_connection_t* c = nullptr;
    xcb_window_t root = 0;
    int rootW = 0, rootH = 0;
    std::uint8_t damageEvent = 0;
};

double ms(Clock::time_point a, Clock::time_point b)
{
    return std::chrono::duration<double, std::milli>(b - a).count();
}

bool covers(const std::vector<Rect>& rects, int w, int h)
{
    // Coarse but exact enough: every 8th pixel of the root must lie in a
    // painted window.
    for (int y = 0; y < h; y += 8)
        for (int x = 0; x < w; x += 8) {
            const bool in = std::any_of(rects.begin(), rects.end(), [&](const Rect& r) {
                return x >= r.x && y >= r.y && x < r.x + r.w && y < r.y + r.h;
            });
            if (!in)
                return false;
        }
    return true;
}

xcb_keycode_t escapeKeycode(xcb_connection_t* c)
{
    const xcb_setup_t* setup = xcb_get_setup(c);
    const int count = setup->max_keycode - setup->min_keycode + 1;
    std::unique_ptr<xcb_get_keyboard_mapping_reply_t, decltype(&std::free)> map(
        xcb_get_keyboard_mapping_reply(
            c, xcb_get_keyboard_mapping(c, setup->min_keycode, static_cast<std::uint8_t>(count)),
            nullptr),
        &std::free);
    const xcb_keysym_t* syms = xcb_get_keyboard_mapping_keysyms(map.get());
    for (int i = 0; i < count * map->keysyms_per_keycode; ++i)
        if (syms[i] == XK_Escape)
            return static_cast<xcb_keycode_t>(setup->min_keycode + i / map->keysyms_per_keycode);
    return 9;
}

// One trigger; answers {map ms, paint ms} or negative numbers on time-out.
std::pair<double, double> measure(Probe& p, char** command)
{
    std::map<xcb_window_t, Rect> created;
    std::map<xcb_window_t, xcb_damage_damage_t> damages;
    std::set<xcb_window_t> mapped;
    std::vector<Rect> painted;
    std::set<xcb_window_t> paintedIds;
    double mapMs = -1;

    // Tools may keep their overlay windows between captures and only map
    // them again: watch every existing top-level too, before the trigger.
    {
        std::unique_ptr<xcb_query_tree_reply_t, decltype(&std::free)> tree(
            xcb_query_tree_reply(p.c, xcb_query_tree(p.c, p.root), nullptr), &std::free);
        const xcb_window_t* kids = tree ? xcb_query_tree_children(tree.get()) : nullptr;
        const int n = tree ? xcb_query_tree_children_length(tree.get()) : 0;
        for (int i = 0; i < n; ++i) {
            std::unique_ptr<xcb_get_geometry_reply_t, decltype(&std::free)> g(
                xcb_get_geometry_reply(p.c, xcb_get_geometry(p.c, kids[i]), nullptr), &std::free);
            if (!g)
                continue;
            created[kids[i]] = {g->x, g->y, g->width, g->height};
            const xcb_damage_damage_t d = xcb_generate_id(p.c);
            xcb_damage_create(p.c, d, kids[i], XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
            damages[kids[i]] = d;
        }
        xcb_flush(p.c);
        // Damage from before the trigger (terminals blinking) is not the tool's.
        free(xcb_get_input_focus_reply(p.c, xcb_get_input_focus(p.c), nullptr));
        while (xcb_generic_event_t* e = xcb_poll_for_event(p.c))
            std::free(e);
    }

    pid_t child = 0;
    const auto t0 = Clock::now();
    if (posix_spawnp(&child, command[0], nullptr, nullptr, command, environ) != 0) {
        std::perror("spawn");
        return {-1, -1};
    }
    const auto deadline = t0 + std::chrono::seconds(10);
    double paintMs = -1;
    const int fd = xcb_get_file_descriptor(p.c);
    while (Clock::now() < deadline && paintMs < 0) {
        xcb_generic_event_t* e = xcb_poll_for_event(p.c);
        if (e == nullptr) {
            pollfd pfd{fd, POLLIN, 0};
            poll(&pfd, 1, 5);
            continue;
        }
        const auto now = Clock::now();
        const int type = e->response_type & 0x7f;
        if (type == XCB_CREATE_NOTIFY) {
            auto* ev = reinterpret_cast<xcb_create_notify_event_t*>(e);
            if (ev->parent == p.root) {
                created[ev->window] = {ev->x, ev->y, ev->width, ev->height};
                // Watch for drawing from before the first map, so no frame is missed.
                const xcb_damage_damage_t d = xcb_generate_id(p.c);
                xcb_damage_create(p.c, d, ev->window, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
                damages[ev->window] = d;
                xcb_flush(p.c);
            }
        } else if (type == XCB_CONFIGURE_NOTIFY) {
            auto* ev = reinterpret_cast<xcb_configure_notify_event_t*>(e);
            if (created.count(ev->window))
                created[ev->window] = {ev->x, ev->y, ev->width, ev->height};
        } else if (type == XCB_MAP_NOTIFY) {
            auto* ev = reinterpret_cast<xcb_map_notify_event_t*>(e);
            if (created.count(ev->window)) {
                mapped.insert(ev->window);
                mapMs = ms(t0, now);
            }
        } else if (type == p.damageEvent + XCB_DAMAGE_NOTIFY) {
            auto* ev = reinterpret_cast<xcb_damage_notify_event_t*>(e);
            xcb_damage_subtract(p.c, ev->damage, XCB_NONE, XCB_NONE);
            xcb_flush(p.c);
            if (mapped.count(ev->drawable) && !paintedIds.count(ev->drawable)) {
                paintedIds.insert(ev->drawable);
                painted.push_back(created[ev->drawable]);
                if (covers(painted, p.rootW, p.rootH))
                    paintMs = ms(t0, now);
            }
        }
        std::free(e);
    }

    // End the overlay and wait until its windows are gone.
    const xcb_keycode_t esc = escapeKeycode(p.c);
    xcb_test_fake_input(p.c, XCB_KEY_PRESS, esc, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_test_fake_input(p.c, XCB_KEY_RELEASE, esc, XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    xcb_flush(p.c);
    const auto closeBy = Clock::now() + std::chrono::seconds(5);
    while (!mapped.empty() && Clock::now() < closeBy) {
        xcb_generic_event_t* e = xcb_poll_for_event(p.c);
        if (e == nullptr) {
            pollfd pfd{fd, POLLIN, 0};
            poll(&pfd, 1, 5);
            continue;
        }
        const int type = e->response_type & 0x7f;
        if (type == XCB_UNMAP_NOTIFY)
            mapped.erase(reinterpret_cast<xcb_unmap_notify_event_t*>(e)->window);
        else if (type == XCB_DESTROY_NOTIFY)
            mapped.erase(reinterpret_cast<xcb_destroy_notify_event_t*>(e)->window);
        std::free(e);
    }
    for (const auto& [w, d] : damages)
        xcb_damage_destroy(p.c, d);
    xcb_flush(p.c);
    int status = 0;
    waitpid(child, &status, 0);
    return {mapMs, paintMs};
}

double median(std::vector<double> v)
{
    if (v.empty())
        return -1;
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4 || std::string_view(argv[2]) != "--") {
        std::fprintf(stderr, "usage: overlay_probe RUNS -- COMMAND [ARGS...]\n");
        return 1;
    }
    const int runs = std::max(1, std::atoi(argv[1]));
    Probe p;
    p.c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(p.c)) {
        std::fprintf(stderr, "overlay_probe: no X display\n");
        return 1;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(p.c)).data;
    p.root = screen->root;
    p.rootW = screen->width_in_pixels;
    p.rootH = screen->height_in_pixels;
    const xcb_query_extension_reply_t* damage = xcb_get_extension_data(p.c, &xcb_damage_id);
    if (damage == nullptr || !damage->present) {
        std::fprintf(stderr, "overlay_probe: the X server has no DAMAGE extension\n");
        return 1;
    }
    p.damageEvent = damage->first_event;
    std::free(xcb_damage_query_version_reply(p.c, xcb_damage_query_version(p.c, 1, 1), nullptr));
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(p.c, p.root, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(p.c);

    std::vector<double> maps, paints;
    int failures = 0;
    for (int i = 0; i < runs; ++i) {
        const auto [mapMs, paintMs] = measure(p, argv + 3);
        if (paintMs < 0) {
            ++failures;
            std::printf("run %d: no painted overlay within 10 s\n", i + 1);
            continue;
        }
        maps.push_back(mapMs);
        paints.push_back(paintMs);
        std::printf("run %d: map %.1f ms paint %.1f ms\n", i + 1, mapMs, paintMs);
        std::fflush(stdout);
    }
    std::printf("median map %.1f ms paint %.1f ms (%d runs, %d failed)\n", median(maps),
                median(paints), static_cast<int>(paints.size()), failures);
    xcb_disconnect(p.c);
    return paints.empty() ? 1 : 0;
}
