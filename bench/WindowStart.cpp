// SPDX-FileCopyrightText: 2026 The Morvix authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>
#include <xcb/damage.h>
#include <xcb/xcb.h>

// The time from the start of a program until its window stands on the screen and is painted, for
// the program against a window with nothing in it; and until the program's content stands in it.
// Runs come in pairs, the first pair for the caches.
//
//   dbus-run-session -- xvfb-run -a window-start PROGRAM EMPTY_WINDOW [PAIRS]
//
// Aim: a median ratio of at most 1.5. Needs a machine that does nothing else, and a display on
// which nothing else is.

namespace {

using Clock = std::chrono::steady_clock;

struct Freed {
    void operator()(void *memory) const { std::free(memory); }
};
template <typename Reply> using Owned = std::unique_ptr<Reply, Freed>;

/// The screen as a stranger sees it.
class Screen
{
public:
    Screen() : m_connection(xcb_connect(nullptr, nullptr))
    {
        if (xcb_connection_has_error(m_connection) != 0) {
            std::fputs("There is no display.\n", stderr);
            std::exit(EXIT_FAILURE);
        }
        m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
        const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_change_window_attributes(m_connection, m_root, XCB_CW_EVENT_MASK, &events);
        const auto version = xcb_damage_query_version(m_connection, XCB_DAMAGE_MAJOR_VERSION,
                                                      XCB_DAMAGE_MINOR_VERSION);
        const Owned<xcb_damage_query_version_reply_t> answer{
            xcb_damage_query_version_reply(m_connection, version, nullptr)};
        if (!answer) {
            std::fputs("The display doesn't tell what is painted.\n", stderr);
            std::exit(EXIT_FAILURE);
        }
    }
    Screen(const Screen &) = delete;
    Screen &operator=(const Screen &) = delete;
    ~Screen() { xcb_disconnect(m_connection); }

    /// The next window of some size that appears.
    xcb_window_t awaitWindow()
    {
        while (const Owned<xcb_generic_event_t> event{xcb_wait_for_event(m_connection)}) {
            if ((event->response_type & 0x7f) == XCB_MAP_NOTIFY) {
                const auto *map = reinterpret_cast<const xcb_map_notify_event_t *>(event.get());
                if (widthOf(map->window) >= leastWidth) {
                    return map->window;
                }
            }
        }
        std::abort();
    }

    /// Until none of a few places of the window shows the black behind it.
    void awaitPainting(xcb_window_t window)
    {
        constexpr std::array<std::array<std::int16_t, 2>, 4> places{
            {{4, 4}, {900, 4}, {500, 350}, {900, 600}}};
        awaitPicture(window, [&] {
            return std::ranges::none_of(
                places, [&](const auto &place) { return isBlack(window, place[0], place[1]); });
        });
    }

    /// Until a line from the window's top to its bottom has more than one colour.
    void awaitContent(xcb_window_t window)
    {
        awaitPicture(window, [&] { return !isPlain(window); });
    }

    void forgetEvents()
    {
        while (Owned<xcb_generic_event_t>(xcb_poll_for_event(m_connection))) {
        }
    }

private:
    static constexpr int leastWidth = 800;

    // Looked at anew with each change of it that the display tells.
    template <typename Condition> void awaitPicture(xcb_window_t window, Condition condition)
    {
        const xcb_damage_damage_t damage = xcb_generate_id(m_connection);
        xcb_damage_create(m_connection, damage, window, XCB_DAMAGE_REPORT_LEVEL_RAW_RECTANGLES);
        xcb_flush(m_connection);
        while (!condition()) {
            if (!Owned<xcb_generic_event_t>(xcb_wait_for_event(m_connection))) {
                std::abort();
            }
        }
        xcb_damage_destroy(m_connection, damage);
    }

    int widthOf(xcb_window_t window)
    {
        const Owned<xcb_get_geometry_reply_t> geometry{
            xcb_get_geometry_reply(m_connection, xcb_get_geometry(m_connection, window), nullptr)};
        return geometry ? geometry->width : 0;
    }

    /// The pixels of a line downwards, of four bytes each, the last without meaning.
    std::vector<std::array<std::uint8_t, 3>> line(xcb_window_t window, std::int16_t x,
                                                  std::int16_t y, std::uint16_t height)
    {
        const Owned<xcb_get_image_reply_t> image{xcb_get_image_reply(
            m_connection,
            xcb_get_image(m_connection, XCB_IMAGE_FORMAT_Z_PIXMAP, window, x, y, 1, height, ~0U),
            nullptr)};
        std::vector<std::array<std::uint8_t, 3>> pixels;
        if (image) {
            const std::span bytes(xcb_get_image_data(image.get()), 4UL * height);
            for (std::size_t at = 0; at < bytes.size(); at += 4) {
                pixels.push_back({bytes[at], bytes[at + 1], bytes[at + 2]});
            }
        }
        return pixels;
    }

    bool isBlack(xcb_window_t window, std::int16_t x, std::int16_t y)
    {
        const auto pixels = line(window, x, y, 1);
        return pixels.empty() || pixels.front() == std::array<std::uint8_t, 3>{};
    }

    bool isPlain(xcb_window_t window)
    {
        const auto pixels = line(window, 520, 0, 700);
        return std::ranges::all_of(pixels, [&](const auto &pixel) { return pixel == pixels[0]; });
    }

    xcb_connection_t *m_connection;
    xcb_window_t m_root = 0;
};

double milliseconds(Clock::duration duration)
{
    return std::chrono::duration<double, std::milli>(duration).count();
}

struct Times {
    double appeared = 0;
    /// Until the content is there; 0 where nobody waited for it.
    double complete = 0;
};

enum class Content { none, awaited };

Times startUp(Screen &screen, std::string program, Content content)
{
    screen.forgetEvents();
    std::array<char *, 2> words{program.data(), nullptr};
    pid_t child = 0;
    const auto start = Clock::now();
    if (::posix_spawn(&child, program.c_str(), nullptr, nullptr, words.data(), environ) != 0) {
        std::fprintf(stderr, "%s can't be started.\n", program.c_str());
        std::exit(EXIT_FAILURE);
    }
    Times times;
    const xcb_window_t window = screen.awaitWindow();
    screen.awaitPainting(window);
    times.appeared = milliseconds(Clock::now() - start);
    if (content == Content::awaited) {
        screen.awaitContent(window);
        times.complete = milliseconds(Clock::now() - start);
    }
    ::kill(child, SIGTERM);
    ::waitpid(child, nullptr, 0);
    return times;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values.at(values.size() / 2);
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc < 3) {
        std::fputs("Usage: window-start PROGRAM EMPTY_WINDOW [PAIRS]\n", stderr);
        return EXIT_FAILURE;
    }
    const int pairs = argc > 3 ? std::atoi(argv[3]) : 15;
    Screen screen;
    std::vector<double> ours;
    std::vector<double> complete;
    std::vector<double> empty;
    std::vector<double> ratios;
    for (int pair = 0; pair <= pairs; ++pair) {
        const Times program = startUp(screen, argv[1], Content::awaited);
        const Times window = startUp(screen, argv[2], Content::none);
        if (pair > 0) {
            ours.push_back(program.appeared);
            complete.push_back(program.complete);
            empty.push_back(window.appeared);
            ratios.push_back(program.appeared / window.appeared);
        }
    }
    std::printf("program %.1f ms, its content %.1f ms, empty window %.1f ms, median ratio %.2f of "
                "%d pairs (aim 1.5)\n",
                median(ours), median(complete), median(empty), median(ratios), pairs);
    return EXIT_SUCCESS;
}
