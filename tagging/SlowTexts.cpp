#include "tagging/SlowTexts.h"

#include <algorithm>

namespace tagging {

namespace {

constexpr std::ptrdiff_t kManyLines = 20; // more than a person types between two questions

// How many lines two texts differ in, from the first difference to the last.
std::ptrdiff_t ChangedLines(std::string_view before, std::string_view now)
{
    const auto [first, _] = std::ranges::mismatch(before, now);
    const size_t begin = static_cast<size_t>(first - before.begin());
    before.remove_prefix(begin);
    now.remove_prefix(begin);
    const auto last = std::mismatch(before.rbegin(), before.rend(), now.rbegin(), now.rend()).first;
    const size_t end = static_cast<size_t>(last - before.rbegin());
    before.remove_suffix(end);
    now.remove_suffix(end);
    return std::max(std::ranges::count(before, '\n'), std::ranges::count(now, '\n'));
}

} // namespace

bool SlowTexts::HasChanged(const Slow& slow, std::string_view text)
{
    const size_t difference = std::max(slow.size, text.size()) - std::min(slow.size, text.size());
    return difference > slow.size / 4 || (slow.text.size() == slow.size && ChangedLines(slow.text, text) >= kManyLines);
}

bool SlowTexts::Has(const std::string& name, std::string_view text, Clock::time_point now) const
{
    const std::lock_guard lock(mutex);
    const auto found = slow.find(name);
    return found != slow.end() && now < found->second.again && !HasChanged(found->second, text);
}

void SlowTexts::Add(const std::string& name, std::string_view text, Clock::time_point now)
{
    const std::lock_guard lock(mutex);
    if (!slow.contains(name) && slow.size() == kMost)
        slow.erase(std::ranges::min_element(slow, {}, [](const auto& each) { return each.second.again; }));
    const auto [found, isNew] = slow.try_emplace(name);
    Slow& each = found->second;
    each.pause = isNew ? kFirstPause : std::min<Clock::duration>(2 * each.pause, kLongestPause);
    each.again = now + each.pause;
    each.size = text.size();
    each.text = text.size() <= kMostBytes ? text : "";
}

void SlowTexts::Remove(const std::string& name)
{
    const std::lock_guard lock(mutex);
    slow.erase(name);
}

} // namespace tagging
