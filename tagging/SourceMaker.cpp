#include "tagging/SourceMaker.h"

#include "tagging/ctags/SourceNames.h"
#include "tagging/objectivec/ObjectiveC.h"

#include <cerrno>
#include <cstring>
#include <strings.h>

namespace tagging {

namespace {

struct Ending {
    std::string_view text;
    Family family;
};

constexpr Ending kEndings[] = {
    {"m", Family::ObjectiveC},        {"mm", Family::ObjectiveCplusplus}, {"h", Family::Header},
    {"pch", Family::Header},          {"hh", Family::CplusplusHeader},    {"hpp", Family::CplusplusHeader},
    {"hxx", Family::CplusplusHeader}, {"inl", Family::CplusplusHeader},
};

Family FamilyOf(std::string_view path)
{
    const std::string_view leaf = path.substr(path.rfind('/') + 1);
    const size_t dot = leaf.rfind('.');
    if (dot == std::string_view::npos)
        return Family::Other;
    for (const Ending& ending : kEndings)
        if (leaf.substr(dot + 1) == ending.text)
            return ending.family;
    return Family::Other;
}

bool IsLanguage(const std::string& language, const char* name)
{
    return ::strcasecmp(language.c_str(), name) == 0;
}

// The family of a source. A forced language overrides the choice of the parser, and only a forced Objective-C allows
// for Objective-C.
Family FamilyFor(const std::string& path, const std::string& language)
{
    const bool isObjectiveC = IsLanguage(language, "ObjectiveC");
    if (!language.empty() && !isObjectiveC && !IsLanguage(language, "C") && !IsLanguage(language, "C++"))
        return Family::Other;
    const Family family = FamilyOf(path);
    return isObjectiveC && family != Family::ObjectiveC ? Family::ObjectiveCplusplus : family;
}

// The parser for a source without its Objective-C.
Parser ParserOfRest(Family family, const std::string& language)
{
    if (IsLanguage(language, "C"))
        return Parser::C;
    if (IsLanguage(language, "C++"))
        return Parser::Cplusplus;
    return family == Family::ObjectiveC ? Parser::C : Parser::Cplusplus;
}

// The source with a text in place of the file.
std::optional<Source> WithText(Source source, std::string_view text, std::string* error)
{
    if (PutInMemory(text, source))
        return source;
    *error = std::strerror(errno);
    return std::nullopt;
}

} // namespace

SourceMaker::SourceMaker(const Settings& settings) : settings(settings) {}

// False if a header contains no Objective-C.
bool SourceMaker::TakeObjectiveC(Family family, std::string_view text, FoundTags& found, std::string& rest)
{
    if (family == Family::Header && !MayHaveObjectiveC(text))
        return false;
    ObjectiveCSource read = ReadObjectiveC(text, settings.ignoredMacros);
    if (family == Family::Header && read.rest == text)
        return false;
    found.tags = std::move(read.tags);
    found.text = reader.TakeBuffer();
    rest = std::move(read.rest);
    return true;
}

std::optional<Source> SourceMaker::Make(unsigned number, const std::string& path, FoundTags& found, std::string* error)
{
    Source source;
    source.number = number;
    source.path = path;
    source.name = NameForCtags(path, settings.ctags.directory);
    if (!ReadsName(source.name)) {
        *error = "ctags cannot be given such a name";
        return std::nullopt;
    }
    const Family family = FamilyFor(path, settings.ctags.language);
    if (family == Family::Other)
        return source;
    // All headers go to the same process: by their names, ctags takes them for C++ too.
    source.parser = ParserOfRest(family, settings.ctags.language);
    std::string rest;
    // Headers for C++ alone are not even read here: that skips two thirds of a system's headers.
    const bool isRead = family != Family::CplusplusHeader && reader.Read(path);
    if (isRead && TakeObjectiveC(family, reader.Text(), found, rest))
        return WithText(std::move(source), rest, error);
    return source; // unchanged: plain, or too large to be read here
}

} // namespace tagging
