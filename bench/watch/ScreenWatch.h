// Records what an X screen shows, and since when.
//
// The watched program does not take part: the X server reports drawing (Damage), and then delivers the picture. Each
// pixel keeps the time of its last change, and so in the end the time since which it has its final colour. Needs a
// server with the extensions Damage, MIT-SHM and XTEST, and 32 bits per pixel. For a single thread.
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

    // Waits until anything is drawn; returns the time of that report, or Clock::time_point() after 'atMost'.
    Clock::time_point WaitForDrawing(Clock::duration atMost);
    void ForgetDrawing(); // what was drawn so far

    // When the program's first window since Begin() was shown; Clock::time_point() if there was none.
    Clock::time_point Shown() const { return shown; }

    // The time when 95 % of the wanted pixels, among those that changed since Begin(), had their present colour. The
    // rest is a blinking caret, and late drawing that a user does not look at.
    using Wanted = std::function<bool(uint32_t pixel)>;
    Clock::time_point DoneSince(const Wanted& wanted) const;

    uint32_t Background() const; // the most frequent pixel of those that changed
    long Changed() const;        // pixels

    void Strike(char letter); // a key, pressed and released, as from a keyboard
    void TakeFocus();         // gives the keyboard to this program's own window

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
    long changedLast = 0;                 // in pixels, at the last look
    Clock::time_point shown;
    Clock::time_point drawn;
};

} // namespace wren::bench
