#include "tags/StringVector.h"

#include <algorithm>
#include <cstdio>

void StringVector::Clear()
{
    strings.clear();
}

void StringVector::PushBackUnique(const char* s)
{
    if (std::find(strings.begin(), strings.end(), s) == strings.end())
        strings.emplace_back(s);
}

void StringVector::CommonSubstring(std::string& out) const
{
    out.clear();
    if (strings.empty())
        return;
    out = strings.front();
    for (const std::string& string : strings)
        out.erase(std::mismatch(out.begin(), out.end(), string.begin(), string.end()).first, out.end());
}

void StringVector::Dump() const
{
    for (const std::string& string : strings)
        std::puts(string.c_str());
}
