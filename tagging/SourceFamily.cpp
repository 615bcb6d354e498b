#include "tagging/SourceFamily.h"

namespace tagging {

namespace {

using Says = NameOfSource::Says;

struct Suffix {
    std::string_view text;
    NameOfSource meaning;
};

constexpr Suffix kSuffixes[] = {
    {"c", {Says::C, false}},
    {"m", {Says::ObjectiveC, false}},
    {"mm", {Says::ObjectiveCplusplus, false}},
    {"M", {Says::ObjectiveCplusplus, false}},
    {"cc", {Says::Cplusplus, false}},
    {"cp", {Says::Cplusplus, false}},
    {"cpp", {Says::Cplusplus, false}},
    {"cxx", {Says::Cplusplus, false}},
    {"c++", {Says::Cplusplus, false}},
    {"C", {Says::Cplusplus, false}},
    {"CPP", {Says::Cplusplus, false}},
    {"CXX", {Says::Cplusplus, false}},
    {"hh", {Says::Cplusplus, true}},
    {"hp", {Says::Cplusplus, true}},
    {"hpp", {Says::Cplusplus, true}},
    {"hxx", {Says::Cplusplus, true}},
    {"h++", {Says::Cplusplus, true}},
    {"H", {Says::Cplusplus, true}},
    {"inl", {Says::Cplusplus, true}},
    {"ipp", {Says::Cplusplus, true}},
    {"tpp", {Says::Cplusplus, true}},
    {"tcc", {Says::Cplusplus, true}},
    {"txx", {Says::Cplusplus, true}},
};

} // namespace

NameOfSource ReadNameOfSource(std::string_view path)
{
    const std::string_view leaf = path.substr(path.rfind('/') + 1);
    const size_t dot = leaf.rfind('.');
    if (dot == std::string_view::npos)
        return {};
    for (const Suffix& suffix : kSuffixes)
        if (leaf.substr(dot + 1) == suffix.text)
            return suffix.meaning;
    return {};
}

} // namespace tagging
