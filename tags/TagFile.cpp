#include "tags/TagFile.h"

#include "scan/Predicates.h"
#include "tags/NameAndQualifier.h"
#include "tags/SortedStrings.h"
#include "tagsfile/Kinds.h"
#include "tagsfile/TagFields.h"
#include "vetch/app/BApplication.h"
#include "vetch/app/BMessage.h"
#include "vetch/storage/BEntry.h"
#include "vetch/storage/EntryRef.h"
#include "vetch/support/ShellEscape.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>
#include <sys/stat.h>
#include <unordered_set>
#include <utility>

namespace {

constexpr uint32 kUnread = FourCC("tgur"); // "path", "why"

std::function<void(const std::string& path, const std::string& why)> gReportUnread; // null for the application

// A longer line is read in pieces, each a line of its own. A tag's name, file and position lie well within the first
// piece. Other pieces are hardly ever tags; like any other text they are skipped, or end a search that stops at a
// mismatch.
constexpr size_t kLineSize = tagsfile::kLongestLine + 1;

// Copies the line for splitting; a NUL byte ends it.
char* Copy(std::string_view line, char (&text)[kLineSize])
{
    std::memcpy(text, line.data(), line.length());
    text[line.length()] = '\0';
    return text;
}

bool IsPseudoTag(std::string_view line)
{
    return line.front() == '!';
}

// A line's fields, split off in order and in place. A missing field is null.
class Fields {
public:
    explicit Fields(char* line) : rest(line) {}

    const char* Name() { return Cut<'\t'>(); }
    const char* File() { return Cut<'\t'>(); }
    const char* Kind() { return Cut<'\t', ';', '"'>(); }
    const char* Scope() { return Cut<'\n'>(); }

    // Accepts only a number. A search pattern makes a line unusable: lookups open files at lines.
    bool Line(int& line)
    {
        const char* command = Cut<'\t', ';'>();
        if (command == nullptr)
            return false;
        char* end;
        const long number = std::strtol(command, &end, 10);
        if (end == command)
            return false;
        line = static_cast<int>(number);
        return true;
    }

private:
    // Skips delimiters before a field, so no field is empty.
    template <char... delimiters>
    char* Cut()
    {
        char* field = rest;
        while (((*field == delimiters) || ...))
            ++field;
        rest = End<delimiters...>(field);
        if (*rest != '\0')
            *rest++ = '\0';
        return *field == '\0' ? nullptr : field;
    }

    // The end of a field. Fields with several delimiters are so short that a loop is fastest.
    template <char... delimiters>
    static char* End(char* field)
    {
        if constexpr (sizeof...(delimiters) == 1)
            return strchrnul(field, (delimiters, ...));
        while (*field != '\0' && ((*field != delimiters) && ...))
            ++field;
        return field;
    }

    char* rest;
};

// Repeats behind each token, so "class:struct:X" is X.
bool StripClassTokens(const char*& text)
{
    bool found = false;
    for (const std::string_view word : tagsfile::kScopeWords) {
        if (std::strncmp(text, word.data(), word.length()) == 0) {
            text += word.length();
            found = true;
        }
    }
    return found;
}

// The qualifier includes the line's further fields: they follow a tab, which no pattern's qualifier contains.
const char* QualifierIn(const char* scope)
{
    return scope != nullptr && StripClassTokens(scope) ? scope : "";
}

// The common beginning of all matching names: the text before template arguments, which are not compared. Names do not
// contain tabs.
std::string StartOfMatches(const std::string& namePattern)
{
    const std::string base(namePattern.c_str(), scan::BaseLength(namePattern.c_str()));
    return base.substr(0, base.find('\t'));
}

// False when the line's name cannot match; most lines leave here, after one comparison. Tabs before a name are not part
// of it.
template <class Match>
bool MayMatch(const std::string& start, std::string_view line, Match)
{
    const char first = line.front();
    if (first != start[0] && !start.empty())
        return first == '\t' || first == '\0';
    return line.starts_with(start);
}

bool MayMatch(const std::string&, std::string_view, TagFile::AnyMatch)
{
    return true;
}

// Skips to the first possible match; true when all lines behind the matches can be left out. AnyMatch accepts every
// line.
template <class Match>
bool SkipToMatches(tagsfile::TagLines& lines, const std::string& start, Match)
{
    return lines.SkipTo(start);
}

bool SkipToMatches(tagsfile::TagLines&, const std::string&, TagFile::AnyMatch)
{
    return false;
}

bool NameMatches(const std::string& pattern, const char* name, TagFile::ExactMatch)
{
    return NameAndQualifier::MatchName::Match(pattern, name);
}

bool NameMatches(const std::string& pattern, const char* name, TagFile::PartialMatch)
{
    return NameAndQualifier::MatchName::PartialMatch(pattern, name);
}

bool NameMatches(const std::string&, const char*, TagFile::AnyMatch)
{
    return true;
}

template <class Match>
bool QualifierMatches(const std::string& pattern, const char* qualifier, Match)
{
    return NameAndQualifier::MatchQualifier::Match(pattern, qualifier);
}

bool QualifierMatches(const std::string&, const char*, TagFile::AnyMatch)
{
    return true;
}

char* Copied(const char* text)
{
    char* const copy = strdup(text);
    if (copy == nullptr)
        throw std::bad_alloc();
    return copy;
}

// Calls the reporter, or posts to the application, which tells the user; does nothing without either. Any thread.
void ReportUnread(const char* path, const std::string& why)
{
    if (gReportUnread)
        return gReportUnread(path, why);
    if (be_app == nullptr)
        return;
    BMessage message(kUnread);
    message.AddString("path", path);
    message.AddString("why", why.c_str());
    be_app->PostMessage(&message);
}

bool Less(const char* a, const char* b)
{
    return std::strcmp(a, b) < 0;
}

} // namespace

void SetUnreadReporter(std::function<void(const std::string& path, const std::string& why)> report)
{
    gReportUnread = std::move(report);
}

TagFile::TagFile(const BEntry* entry, const std::string& pattern, bool checkDates) : path(entry), checkDates(checkDates)
{
    NameAndQualifier::Split(pattern, namePattern, qualifierPattern);
    startOfMatches = StartOfMatches(namePattern);
}

TagFile::TagFile(const TagFile& other)
    : path(other.path), namePattern(other.namePattern), qualifierPattern(other.qualifierPattern),
      startOfMatches(other.startOfMatches), checkDates(other.checkDates)
{
}

// Leaks a file that is still open: only Done() closes, as at destruction.
bool TagFile::Rewind()
{
    if (!lines.Open(path.Path()))
        return false;
    if (lines.WhyUnread())
        ReportUnread(path.Path(), *lines.WhyUnread());
    return true;
}

void TagFile::Done()
{
    lines.Close();
}

time_t TagFile::TagTime() const
{
    struct stat status;
    return stat(path.Path(), &status) == 0 ? status.st_mtime : 0;
}

void TagFile::SkipClassToken(const char*& text, std::string& qualifier)
{
    if (text != nullptr && StripClassTokens(text))
        qualifier = text;
}

bool TagFile::Next(std::string& name, std::string& qualifier)
{
    name.clear();
    std::string_view line;
    char text[kLineSize];
    while (lines.Next(line)) {
        if (IsPseudoTag(line))
            continue;
        Fields fields(Copy(line, text));
        const char* tagName = fields.Name();
        int ignoredLine;
        if (tagName == nullptr || fields.File() == nullptr || !fields.Line(ignoredLine) || fields.Kind() == nullptr)
            continue;
        // Does not check the source: completions read all tags, and a million checks take too long. So they also offer
        // tags of missing sources.
        qualifier = QualifierIn(fields.Scope());
        name = tagName;
        return true;
    }
    return false;
}

template <class Match>
bool TagFile::NextMatch(std::string& name, std::string& qualifier, char& kind, EntryRef& ref, int& line,
                        bool stopAtMismatch, Match match)
{
    name.clear();
    qualifier.clear();
    ref = EntryRef();
    kind = 0;

    std::string source; // the file field of the line that 'ref' is from
    const bool skips = !stopAtMismatch && SkipToMatches(lines, startOfMatches, match);
    std::string_view whole;
    char text[kLineSize];
    while (lines.Next(whole)) {
        if (IsPseudoTag(whole))
            continue;
        if (!MayMatch(startOfMatches, whole, match)) {
            if (stopAtMismatch)
                return false;
            if (skips && whole >= startOfMatches) {
                lines.GoToEnd(); // as after reading it all
                return false;
            }
            if (!skips)
                lines.PassOver([&](std::string_view line) { return MayMatch(startOfMatches, line, match); });
            continue;
        }
        Fields fields(Copy(whole, text));
        const char* tagName = fields.Name();
        if (tagName == nullptr)
            continue;
        if (!NameMatches(namePattern, tagName, match)) {
            if (stopAtMismatch)
                return false;
            continue;
        }
        const char* file = fields.File();
        if (file == nullptr)
            continue;
        // The tags of a name in one file are adjacent: one check of the file serves the skipped ones too.
        if (source != file) {
            if (!FindSource(file, ref))
                continue;
            source = file;
        }
        if (!fields.Line(line))
            continue;
        const char* tagKind = fields.Kind();
        if (tagKind == nullptr)
            continue;
        kind = *tagKind;
        // The tags of a name are adjacent with all their qualifiers, so another qualifier does not end the search.
        const char* tagQualifier = QualifierIn(fields.Scope());
        if (!QualifierMatches(qualifierPattern, tagQualifier, match))
            continue;
        qualifier = tagQualifier;
        name = tagName;
        return true;
    }
    return false;
}

template bool TagFile::NextMatch(std::string&, std::string&, char&, EntryRef&, int&, bool, ExactMatch);
template bool TagFile::NextMatch(std::string&, std::string&, char&, EntryRef&, int&, bool, PartialMatch);
template bool TagFile::NextMatch(std::string&, std::string&, char&, EntryRef&, int&, bool, AnyMatch);

// Sets 'ref' to an existing source and checks its date. 'ref' stays set even if the rest of the line is not a tag.
bool TagFile::FindSource(const char* file, EntryRef& ref)
{
    std::string source = DeEscaped(file);
    if (source[0] != '/')
        source.insert(0, Directory() + "/");
    // Equals a BEntry, which would need a second status call for the date.
    const EntryRef found(source.c_str());
    struct stat status;
    if (::lstat(found.Path().c_str(), &status) != 0)
        return false;
    CheckDate(found, status);
    ref = found;
    return true;
}

std::string TagFile::Directory() const
{
    const std::string whole = path.Path();
    return whole.substr(0, whole.rfind('/'));
}

// Only a nearly empty source makes a tags file stale: all its tags are wrong. A source in work is usually newer than
// its tags, most of which are still right; a rebuild at every lookup after every save would keep the machine busy.
void TagFile::CheckDate(const EntryRef& source, const struct stat& status)
{
    constexpr off_t kLargestSize = 9;
    if (!checkDates || outOfDate)
        return;
    outOfDate = status.st_size <= kLargestSize && status.st_mtime > TagTime();
    if (outOfDate)
        newerSource = source.Path();
}

void TagFile::LoadPathCache(std::vector<char*>& paths)
{
    // Most lines repeat a file: finds it without comparing long, similar paths.
    std::unordered_set<std::string_view> known(paths.begin(), paths.end());
    std::string_view line;
    char text[kLineSize];
    while (lines.Next(line)) {
        if (IsPseudoTag(line))
            continue;
        Fields fields(Copy(line, text));
        const char* file = fields.Name() != nullptr ? fields.File() : nullptr;
        if (file == nullptr || known.count(file) != 0)
            continue;
        // Keeps the path escaped: only a pattern with the escape finds a blank in a file's name.
        paths.push_back(nullptr);
        paths.back() = Copied(file);
        known.insert(paths.back());
    }
    // Sorts once, at the end: with millions of paths, to keep them sorted takes hours.
    SortUnlessCancelled(paths, Less);
}
