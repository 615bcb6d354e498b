// What is seen on an X screen, and since when.
//
// The program that is watched is not asked anything: the X server tells of what was drawn (Damage), and then is asked
// for the picture. Each pixel keeps the time when it last became another one, so that in the end each has the time
// since which it looks as it does. Needs a server with the extensions Damage, MIT-SHM and XTEST, and 32 bits a pixel.
// One thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include <xcb/damage.h>
#include <xcb/shm.h>
#include <xcb/xcb.h>

namespace wren::bench {

using Clock = std::chrono::steady_clock;

class ScreenWatch {
public:
    ScreenWatch(); // on DISPLAY; throws std::runtime_error
    ~ScreenWatch();
    ScreenWatch(const ScreenWatch&) = delete;
    ScreenWatch& operator=(const ScreenWatch&) = delete;

    // From now on pixels count as unchanged, and windows as not seen.
    void Begin();

    // Watches until nothing was drawn for 'quiet', or 'atMost' has passed. A blinking caret counts as nothing.
    void WatchUntilQuiet(Clock::duration quiet, Clock::duration atMost);

    // Until anything is drawn at all; the time when that was told, or nothing's after 'atMost'.
    Clock::time_point WaitForDrawing(Clock::duration atMost);
    void ForgetDrawing(); // what was drawn so far

    // The first window of a program's own that was shown since Begin(); Clock::time_point() when there was none.
    Clock::time_point Shown() const { return shown; }

    // When nine and a half of ten pixels that are wanted looked as they do now, of those that changed since Begin().
    // The rest is a blinking caret, and what programs do behind what one looks at.
    using Wanted = std::function<bool(uint32_t pixel)>;
    Clock::time_point DoneSince(const Wanted& wanted) const;

    uint32_t Background() const; // the most frequent pixel of those that changed
    long Changed() const;        // pixels

    void Strike(char letter); // a key, pressed and let go, as from a keyboard
    void TakeFocus();         // gives the keyboard to a window of this program's own

private:
    void OpenPicture();
    void Look();
    bool HearEvents(); // true: something was drawn
    bool WaitForEvent(Clock::time_point until);
    std::span<const uint32_t> Pixels() const;

    xcb_connection_t* connection;
    const xcb_setup_t* setup;
    xcb_screen_t* screen;
    xcb_damage_damage_t damage;
    xcb_shm_seg_t segment;
    uint8_t damageEvent;
    const uint32_t* picture = nullptr;
    std::vector<uint32_t> before;
    std::vector<Clock::time_point> since; // of each pixel; Clock::time_point() when it never changed
    long changedLast = 0;                 // pixels, by the last look
    Clock::time_point shown;
    Clock::time_point drawn;
};

} // namespace wren::bench
