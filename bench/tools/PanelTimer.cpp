#include "tests/session/panel/ScreenWindows.h"

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <poll.h>

namespace {

using tessary::testing::ScreenWindows;

constexpr int kRuns = 15;
const std::vector<xcb_keycode_t> kShortcut{37, 64, 65}; // Control, Alt, Space

/// Between two looks at the screen, which has nobody to tell us.
void waitBriefly(std::chrono::microseconds time)
{
    constexpr long kNanoseconds = 1000;
    const timespec span{0, static_cast<long>(time.count()) * kNanoseconds};
    ::ppoll(nullptr, 0, &span, nullptr);
}

double millisecondsUntil(const std::function<bool()>& condition)
{
    constexpr qint64 kPatience = 5000;
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < kPatience)
        waitBriefly(std::chrono::microseconds(200));
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Until nothing has changed there for a while.
void rest(ScreenWindows& screen, const QRect& area)
{
    constexpr int kQuiet = 40; // looks
    QImage last = screen.picture(area);
    for (int same = 0; same < kQuiet; ++same) {
        waitBriefly(std::chrono::milliseconds(10));
        const QImage now = screen.picture(area);
        if (now != last)
            same = 0;
        last = now;
    }
}

void print(const char* what, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    std::printf("%s: %.1f ms (%.1f to %.1f)\n", what, times[times.size() / 2], times.front(), times.back());
}

} // namespace

/// panel_timer: how soon the panel of a running Tessary, with its shortcut on Control+Alt+Space, is painted,
/// and what is found by a letter. For a screen of 1280 x 800 without a compositor.
int main()
{
    const QRect footer(300, 600, 400, 30);
    const QRect list(262, 190, 300, 200);
    ScreenWindows screen;
    std::vector<double> shown;
    std::vector<double> found;
    for (int run = 0; run < kRuns; ++run) {
        const QImage before = screen.picture(footer);
        screen.press(kShortcut);
        shown.push_back(millisecondsUntil([&] { return screen.picture(footer) != before; }));
        rest(screen, list);
        const QImage all = screen.picture(list);
        screen.press({static_cast<xcb_keycode_t>(24 + run % 3)}); // q, w, e
        found.push_back(millisecondsUntil([&] { return screen.picture(list) != all; }));
        rest(screen, list);
        screen.press(kShortcut);
        (void)millisecondsUntil([&] { return !screen.visible("Tessary"); });
        rest(screen, footer);
    }
    constexpr double kDebounce = 180;
    std::printf("first of all: %.1f ms\n", shown.front());
    print("shortcut to first paint", shown);
    print("letter to painted results", found);
    for (double& time : found)
        time -= kDebounce;
    print("the same without the pause for typing", found);
    return 0;
}
