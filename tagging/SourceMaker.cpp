#include "tagging/SourceMaker.h"

#include "base/Paths.h"
#include "tagging/objectivec/ObjectiveC.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <strings.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tagging {

namespace {

// No real header is larger; larger files go to ctags unread.
constexpr size_t kLargestText = 64 * 1024 * 1024;

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

// ctags reads one name per line, and strips blanks at its end.
bool ReadsName(const std::string& name)
{
    return name.find_first_of("\r\n") == std::string::npos && !std::isspace(static_cast<unsigned char>(name.back()));
}

// Relative to the directory in which ctags runs if the file is below it, since that directory's own name may not fit
// into a line. Begins with "./", since ctags also reads options from the list.
std::string NameForCtags(const std::string& path, const std::string& directory)
{
    const size_t length = directory.size();
    const bool isBelow = path.compare(0, length, directory) == 0 && path[length] == '/';
    return isBelow ? "." + path.substr(length) : path;
}

// A file in memory that ctags, another process, opens by its name.
bool PutInMemory(std::string_view text, Source& source)
{
    source.text = base::Descriptor(::memfd_create("source", MFD_CLOEXEC));
    source.name = "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(source.text.Number());
    while (!text.empty()) {
        const ssize_t size = ::write(source.text.Number(), text.data(), text.size());
        if (size < 0)
            return false;
        text.remove_prefix(static_cast<size_t>(size));
    }
    return source.text.IsOpen();
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

bool SourceMaker::Read(const std::string& path, std::string_view& text)
{
    // The file may have become a pipe since the list was read.
    const base::Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status;
    if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode) ||
        static_cast<size_t>(status.st_size) > kLargestText)
        return false;
    if (capacity < static_cast<size_t>(status.st_size)) {
        capacity = std::max(static_cast<size_t>(status.st_size), 2 * capacity);
        buffer.reset(new char[capacity]); // make_unique would clear it
    }
    size_t size = 0;
    while (size < static_cast<size_t>(status.st_size)) {
        const ssize_t count = ::read(file.Number(), buffer.get() + size, status.st_size - size);
        if (count <= 0)
            break;
        size += static_cast<size_t>(count);
    }
    text = std::string_view(buffer.get(), size);
    return true;
}

// False if a header contains no Objective-C.
bool SourceMaker::TakeObjectiveC(Family family, std::string_view text, Source& source, std::string& rest)
{
    if (family == Family::Header && !MayHaveObjectiveC(text))
        return false;
    ObjectiveCSource read = ReadObjectiveC(text, settings.ignoredMacros);
    if (family == Family::Header && read.rest == text)
        return false;
    source.tags = std::move(read.tags);
    source.textOfTags = std::move(buffer);
    capacity = 0;
    rest = std::move(read.rest);
    return true;
}

std::optional<Source> SourceMaker::Make(unsigned number, const std::string& path, std::string* error)
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
    std::string_view text;
    std::string rest;
    // Headers for C++ alone are not even read here: that skips two thirds of a system's headers.
    if (family != Family::CplusplusHeader && Read(path, text) && TakeObjectiveC(family, text, source, rest))
        return WithText(std::move(source), rest, error);
    return source; // unchanged: plain, or too large to be read here
}

} // namespace tagging
