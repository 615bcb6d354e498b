// Reads any bytes as an ignore file and as git's index. Patterns of letters, stars, question marks and slashes match as
// the plainest program for them does.
#include "fuzz/Lines.h"
#include "fuzz/Require.h"
#include "symbols/update/GitIndex.h"
#include "symbols/update/IgnoreRules.h"
#include "tests/support/TempDirectory.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace {

using std::string_view;

constexpr const char* kPaths[] = {"/t/a", "/t/a.c", "/t/a/b", "/t/aa/b/aab", "/t/a/b/a/b/ab", "/t/b/.a/aaaaab"};

// 'isStart' is whether the pattern begins a part of the path.
bool Matches(string_view pattern, string_view path, bool isStart)
{
    if (pattern.empty())
        return path.empty();
    if (isStart && pattern == "**")
        return !path.empty();
    if (isStart && pattern.starts_with("**/")) {
        for (string_view rest = path;; rest.remove_prefix(rest.find('/') + 1)) {
            if (Matches(pattern.substr(3), rest, true))
                return true;
            if (rest.find('/') == string_view::npos)
                return false;
        }
    }
    if (pattern[0] == '*')
        return Matches(pattern.substr(1), path, false) ||
               (!path.empty() && path[0] != '/' && Matches(pattern, path.substr(1), false));
    const bool fits = !path.empty() && (pattern[0] == '?' ? path[0] != '/' : path[0] == pattern[0]);
    return fits && Matches(pattern.substr(1), path.substr(1), pattern[0] == '/');
}

// Only lines for which this is the whole truth. Git takes "a**/" for directories, too.
bool IsPlain(string_view line)
{
    const size_t sign = line.find_first_of("*?");
    if (sign != string_view::npos && sign > 0 && line[sign - 1] != '/' && line.substr(sign).starts_with("**"))
        return false;
    return line.find_first_not_of("ab.c*?/") == string_view::npos && line.find('/') != string_view::npos &&
           line.find("***") == string_view::npos && line.back() != '/' && line.size() < 12;
}

void TryPattern(const std::string& line)
{
    const auto pattern = symbols::IgnorePattern::Parse(line);
    for (const string_view absolute : kPaths) {
        const string_view path = absolute.substr(3);
        const bool matches = pattern && pattern->Matches(path, false);
        if (pattern && IsPlain(line))
            Require(matches == Matches(string_view(line).substr(line[0] == '/'), path, true),
                    "patterns match as git's");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    for (const std::string& line : Split(data, size, '\n'))
        TryPattern(line);
    const auto rules = symbols::IgnoreRules::WithText(nullptr, text, "/t");
    for (const string_view path : kPaths)
        Require(rules == nullptr || rules->Ignores(path, false) == rules->Ignores(path, false), "rules do not change");

    static const TempDirectory git;
    git.Write("index", text);
    for (const size_t hash : {20, 32}) {
        const symbols::GitIndex index(git.Path(), hash);
        Require(index.Size() <= size, "each tracked name has its bytes");
        index.TracksBelow("a");
    }
    return 0;
}
