// Texts that ctags has taken too long for.
#pragma once

#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace tagging {

// An editor asks about a text at each letter, and each question would wait for ctags until the time limit. So a text of
// the same name is not tried again until it has changed in many places, or a pause has passed that doubles each time.
// Thread-safe.
class SlowTexts {
public:
    using Clock = std::chrono::steady_clock;

    static constexpr std::chrono::minutes kFirstPause{1};
    static constexpr std::chrono::minutes kLongestPause{32};

    bool Has(const std::string& name, std::string_view text, Clock::time_point now) const;
    void Add(const std::string& name, std::string_view text, Clock::time_point now);
    void Remove(const std::string& name); // after success

private:
    static constexpr size_t kMost = 16;
    static constexpr size_t kMostBytes = size_t(2) << 20; // of a text that is kept

    struct Slow {
        std::string text; // "" for a longer one
        size_t size = 0;  // bytes
        Clock::time_point again;
        Clock::duration pause;
    };

    static bool HasChanged(const Slow& slow, std::string_view text);

    mutable std::mutex mutex; // guards the next one
    std::map<std::string, Slow> slow;
};

} // namespace tagging
