#include "bench/watch/ScreenWatch.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <poll.h>
#include <stdexcept>
#include <sys/ipc.h>
#include <sys/shm.h>
#include <unordered_map>
#include <utility>

namespace wren::bench {

namespace {

constexpr long kCaret = 200;     // more pixels than a caret has
constexpr int kLeastWidth = 100; // of a real window; smaller ones are invisible helpers
constexpr double kNearlyAll = 0.95;

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <class Reply>
std::unique_ptr<Reply, Free> Answered(Reply* reply, const char* what)
{
    if (reply == nullptr)
        throw std::runtime_error(std::string("the X server refuses: ") + what);
    return std::unique_ptr<Reply, Free>(reply);
}

uint8_t DamageEvents(xcb_connection_t* connection)
{
    const auto* extension = xcb_get_extension_data(connection, &xcb_damage_id);
    if (extension == nullptr || !extension->present)
        throw std::runtime_error("the X server has no Damage");
    Answered(xcb_damage_query_version_reply(connection, xcb_damage_query_version(connection, 1, 1), nullptr), "Damage");
    return extension->first_event;
}

} // namespace

ScreenWatch::ScreenWatch() : connection(xcb_connect(nullptr, nullptr)), setup(xcb_get_setup(connection))
{
    if (xcb_connection_has_error(connection) != 0)
        throw std::runtime_error("no X server at DISPLAY");
    screen = xcb_setup_roots_iterator(setup).data;
    damageEvent = DamageEvents(connection);
    OpenPicture();
    damage = xcb_generate_id(connection);
    xcb_damage_create(connection, damage, screen->root, XCB_DAMAGE_REPORT_LEVEL_NON_EMPTY);
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection, screen->root, XCB_CW_EVENT_MASK, &events);
    Begin();
}

ScreenWatch::~ScreenWatch()
{
    ::shmdt(picture);
    xcb_disconnect(connection);
}

void ScreenWatch::OpenPicture()
{
    const size_t bytes = size_t(screen->width_in_pixels) * screen->height_in_pixels * sizeof(uint32_t);
    const int memory = ::shmget(IPC_PRIVATE, bytes, IPC_CREAT | 0600);
    picture = static_cast<const uint32_t*>(::shmat(memory, nullptr, 0));
    segment = xcb_generate_id(connection);
    xcb_shm_attach(connection, segment, memory, false);
    Answered(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr), "to answer");
    ::shmctl(memory, IPC_RMID, nullptr); // removed once both have detached it
}

std::span<const uint32_t> ScreenWatch::Pixels() const
{
    return {picture, size_t(screen->width_in_pixels) * screen->height_in_pixels};
}

void ScreenWatch::Begin()
{
    before.clear();
    since.assign(Pixels().size(), {});
    Look();
    while (HearEvents())
        Look();
    shown = {};
}

// The picture shows what was drawn before the request, so its time is never too early.
void ScreenWatch::Look()
{
    xcb_damage_subtract(connection, damage, XCB_NONE, XCB_NONE);
    Answered(
        xcb_shm_get_image_reply(connection,
                                xcb_shm_get_image(connection, screen->root, 0, 0, screen->width_in_pixels,
                                                  screen->height_in_pixels, ~0u, XCB_IMAGE_FORMAT_Z_PIXMAP, segment, 0),
                                nullptr),
        "its picture");
    const auto now = Clock::now();
    const auto pixels = Pixels();
    changedLast = 0;
    for (size_t i = 0; i < before.size(); ++i) {
        if (pixels[i] != before[i]) {
            since[i] = now;
            ++changedLast;
        }
    }
    before.assign(pixels.begin(), pixels.end());
}

bool ScreenWatch::HearEvents()
{
    bool any = false;
    xcb_flush(connection);
    while (const std::unique_ptr<xcb_generic_event_t, Free> event{xcb_poll_for_event(connection)}) {
        const int type = event->response_type & 0x7f;
        any |= type == damageEvent + XCB_DAMAGE_NOTIFY;
        if (type != XCB_MAP_NOTIFY || shown != Clock::time_point())
            continue;
        const auto window = reinterpret_cast<const xcb_map_notify_event_t*>(event.get())->window;
        const std::unique_ptr<xcb_get_geometry_reply_t, Free> frame{
            xcb_get_geometry_reply(connection, xcb_get_geometry(connection, window), nullptr)};
        if (frame != nullptr && frame->width >= kLeastWidth)
            shown = Clock::now();
    }
    if (any)
        drawn = Clock::now();
    return any;
}

bool ScreenWatch::WaitForEvent(Clock::time_point until)
{
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now()).count();
    pollfd waiting = {xcb_get_file_descriptor(connection), POLLIN, 0};
    return left > 0 && ::poll(&waiting, 1, static_cast<int>(left)) > 0;
}

void ScreenWatch::WatchUntilQuiet(Clock::duration quiet, Clock::duration atMost)
{
    const auto end = Clock::now() + atMost;
    auto last = Clock::now();
    const auto over = [&] { return shown == Clock::time_point() ? end : std::min(end, last + quiet); };
    while (Clock::now() < over()) {
        if (!HearEvents())
            WaitForEvent(over());
        if (std::exchange(drawn, {}) == Clock::time_point())
            continue;
        Look();
        if (changedLast > kCaret)
            last = Clock::now();
    }
}

Clock::time_point ScreenWatch::WaitForDrawing(Clock::duration atMost)
{
    const auto end = Clock::now() + atMost;
    while (!HearEvents())
        if (!WaitForEvent(end))
            return {};
    return std::exchange(drawn, {});
}

void ScreenWatch::ForgetDrawing()
{
    xcb_damage_subtract(connection, damage, XCB_NONE, XCB_NONE);
    HearEvents();
    drawn = {};
}

Clock::time_point ScreenWatch::DoneSince(const Wanted& wanted) const
{
    std::vector<Clock::time_point> times;
    for (size_t i = 0; i < since.size(); ++i)
        if (since[i] != Clock::time_point() && wanted(before[i]))
            times.push_back(since[i]);
    if (times.empty())
        return {};
    const auto middle = times.begin() + static_cast<long>(static_cast<double>(times.size() - 1) * kNearlyAll);
    std::ranges::nth_element(times, middle);
    return *middle;
}

uint32_t ScreenWatch::Background() const
{
    std::unordered_map<uint32_t, long> counts;
    for (size_t i = 0; i < since.size(); ++i)
        if (since[i] != Clock::time_point())
            ++counts[before[i]];
    const auto most = std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; });
    return most == counts.end() ? 0 : most->first;
}

long ScreenWatch::Changed() const
{
    return std::ranges::count_if(since, [](auto time) { return time != Clock::time_point(); });
}

void ScreenWatch::Strike(char letter)
{
    const auto codes = static_cast<uint8_t>(setup->max_keycode - setup->min_keycode + 1);
    const auto symbols =
        Answered(xcb_get_keyboard_mapping_reply(
                     connection, xcb_get_keyboard_mapping(connection, setup->min_keycode, codes), nullptr),
                 "its keyboard");
    const xcb_keysym_t* syms = xcb_get_keyboard_mapping_keysyms(symbols.get());
    for (int code = setup->min_keycode; code <= setup->max_keycode; ++code) {
        if (syms[(code - setup->min_keycode) * symbols->keysyms_per_keycode] != static_cast<xcb_keysym_t>(letter))
            continue;
        for (const uint8_t type : {uint8_t{XCB_KEY_PRESS}, uint8_t{XCB_KEY_RELEASE}})
            xcb_test_fake_input(connection, type, static_cast<uint8_t>(code), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
        xcb_flush(connection);
        return;
    }
    throw std::runtime_error("the keyboard has no such key");
}

void ScreenWatch::TakeFocus()
{
    const xcb_window_t window = xcb_generate_id(connection);
    const uint32_t unmanaged = 1;
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT, &unmanaged);
    xcb_map_window(connection, window);
    xcb_set_input_focus(connection, XCB_INPUT_FOCUS_NONE, window, XCB_CURRENT_TIME);
    Answered(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr), "the keyboard");
}

} // namespace wren::bench
