#include "scan/Predicates.h"

#include <algorithm>

bool IsMultiPartObjCPattern(const std::string& pattern)
{
    return IsObjCPattern(pattern) && pattern.find(':', pattern.find(':') + 1) != std::string::npos;
}

// In "operator<", "a<b" and "a<b>c" no arguments end the name or a scope, so the whole name counts. "operator<=>" reads
// as a template called "operator", and is found by that name.
size_t scan::BaseLength(const char* name)
{
    const char* open = std::strchr(name, '<');
    if (open == nullptr)
        return std::strlen(name);
    const char* close = std::strrchr(open, '>');
    const bool isTemplate = close != nullptr && (close[1] == ':' || close[1] == '\0');
    return isTemplate ? static_cast<size_t>(open - name) : std::strlen(name);
}

bool scan::BasesMatch(const char* a, const char* b, unsigned long n)
{
    const size_t length = std::min<size_t>(BaseLength(a), n);
    return length == std::min<size_t>(BaseLength(b), n) && std::memcmp(a, b, length) == 0;
}

std::string StripStd(const std::string& name)
{
    constexpr char kStd[] = "std::";
    constexpr size_t kLength = sizeof kStd - 1;
    return name.length() > kLength && name.compare(0, kLength, kStd) == 0 ? name.substr(kLength) : name;
}
