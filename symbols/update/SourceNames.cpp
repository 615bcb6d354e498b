#include "symbols/update/SourceNames.h"

#include "base/Identifier.h"

#include <algorithm>

namespace symbols {

namespace {

constexpr std::string_view kSuffixes = " c c++ cc cp cpp cxx h h++ hh hp hpp hxx inl ipp tpp tcc txx m mm C CPP CXX H ";
constexpr size_t kLongest = 3;

} // namespace

std::string_view SourceSuffixes()
{
    return kSuffixes;
}

bool IsSourceName(std::string_view leaf)
{
    const size_t dot = leaf.rfind('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == leaf.size() || leaf.size() - dot - 1 > kLongest)
        return false;
    char word[kLongest + 2] = {' '};
    char* const end = std::copy(leaf.begin() + static_cast<std::ptrdiff_t>(dot) + 1, leaf.end(), word + 1);
    *end = ' ';
    return kSuffixes.find(std::string_view(word, end + 1)) != std::string_view::npos;
}

bool CanBeHeaderWithoutSuffix(std::string_view leaf)
{
    return !leaf.empty() &&
           std::ranges::all_of(leaf, [](char c) { return base::IsIdentifierCharacter(c) || c == '-'; });
}

bool LooksLikeHeader(std::string_view text)
{
    if (text.find('\0') != std::string_view::npos)
        return false;
    for (const std::string_view sign : {"-*- C++ -*-", "#include", "#ifndef", "#pragma once", "#if "})
        if (const size_t at = text.find(sign); at != std::string_view::npos && !text.starts_with("#!"))
            return true;
    return false;
}

} // namespace symbols
