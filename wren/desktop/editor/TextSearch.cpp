#include "wren/desktop/editor/TextSearch.h"

#include "base/Utf8.h"

#include <Qsci/qsciscintillabase.h>

#include <algorithm>
#include <utility>

namespace wren {

namespace {

using Sci = QsciScintillaBase;

char Lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// Scintilla knows upper and lower case of ASCII only.
bool NeedsExpression(const TextSearch& search)
{
    return search.regularExpression || (!search.matchCase && !base::IsAscii(search.text));
}

QRegularExpression ExpressionOf(const TextSearch& search)
{
    if (!NeedsExpression(search))
        return {};
    const QString wanted = QString::fromStdString(search.text);
    QString pattern = search.regularExpression ? wanted : QRegularExpression::escape(wanted);
    // Checked alone first: a ")(" would be made valid by what is put around it.
    if (search.wholeWords && QRegularExpression(pattern).isValid())
        pattern = "\\b(?:" + pattern + ")\\b";
    QRegularExpression::PatternOptions options = QRegularExpression::UseUnicodePropertiesOption;
    if (!search.matchCase)
        options |= QRegularExpression::CaseInsensitiveOption;
    return QRegularExpression(pattern, options);
}

// A line as the expression sees it, and back to its bytes. A line that is not UTF-8 is taken byte by byte.
class Line {
public:
    explicit Line(const std::string& bytes) : characters(QString::fromStdString(bytes))
    {
        single = characters.toStdString() != bytes;
        if (single)
            characters = QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
        single = single || static_cast<size_t>(characters.size()) == bytes.size();
    }

    const QString& Characters() const { return characters; }

    long ByteOf(qsizetype character) const
    {
        return single ? character : QStringView(characters).left(character).toUtf8().size();
    }

private:
    QString characters;
    bool single; // a byte is a character
};

std::vector<std::string> GroupsOf(const QRegularExpressionMatch& match, const Line& line, const std::string& bytes)
{
    std::vector<std::string> groups;
    for (int group = 0; group <= match.lastCapturedIndex(); group++) {
        const long start = match.capturedStart(group) < 0 ? 0 : line.ByteOf(match.capturedStart(group));
        const long end = match.capturedEnd(group) < 0 ? 0 : line.ByteOf(match.capturedEnd(group));
        groups.push_back(bytes.substr(start, end - start));
    }
    return groups;
}

} // namespace

TextFinder::TextFinder(const ViewText& text, const TextSearch& search)
    : text(text), search(search), byExpression(NeedsExpression(search)), expression(ExpressionOf(search))
{
}

std::optional<TextFinder::Found> TextFinder::FindNext(Selection from) const
{
    const long length = text.Length();
    if (search.backwards) {
        auto found = from.start > 0 || from.end > 0 ? Last(from.start) : std::nullopt;
        if (found && found->range != from)
            return found;
        // An expression that matches nothing ("^", "x*") would find the same place for ever.
        const auto before = found && from.start > 0 ? Last(from.start - 1) : std::nullopt;
        return before ? before : Last(length);
    }
    auto found = First(from.end);
    if (found && found->range == from)
        found = from.end < length ? First(text.Send(Sci::SCI_POSITIONAFTER, from.end)) : std::nullopt;
    return found ? found : First(0);
}

std::optional<TextFinder::Found> TextFinder::At(Selection selected) const
{
    const auto found = First(selected.start);
    return found && found->range == selected ? found : std::nullopt;
}

std::optional<TextFinder::Found> TextFinder::First(long start) const
{
    std::optional<Found> first;
    Each(start, [&](const Found& found) {
        first = found;
        return false;
    });
    return first;
}

std::optional<TextFinder::Found> TextFinder::Last(long end) const
{
    if (!byExpression) {
        const auto found = FindPlain(end, 0);
        return found ? std::optional(Found{*found, {}}) : std::nullopt;
    }
    std::optional<Found> last;
    for (long line = text.Send(Sci::SCI_LINEFROMPOSITION, end); line >= 0 && !last; line--) {
        EachInLine(line, 0, [&](const Found& found) {
            if (found.range.end <= end)
                last = found;
            return found.range.end <= end;
        });
    }
    return last;
}

void TextFinder::Each(long start, const Visit& visit) const
{
    if (search.text.empty() || !IsValid())
        return;
    if (!byExpression)
        return EachPlain(start, visit);
    const long lines = text.Send(Sci::SCI_GETLINECOUNT);
    for (long line = text.Send(Sci::SCI_LINEFROMPOSITION, start); line < lines; line++)
        if (!EachInLine(line, start, visit))
            return;
}

void TextFinder::EachPlain(long start, const Visit& visit) const
{
    while (const auto found = FindPlain(start, text.Length())) {
        if (!visit({*found, {}}))
            return;
        start = found->end;
    }
}

long TextFinder::EachWithin(long start, long end, const Visit& visit) const
{
    const long length = text.Length();
    if (search.text.empty() || !IsValid() || start > length)
        return length + 1;
    if (!byExpression) {
        while (start < end) {
            const auto found = FindPlain(start, std::min(end + static_cast<long>(search.text.size()) - 1, length));
            if (!found)
                break;
            start = found->end;
            if (!visit({*found, {}}))
                break;
        }
        return end >= length ? length + 1 : std::max(start, end);
    }
    const long last = text.Send(Sci::SCI_LINEFROMPOSITION, std::min(end, length));
    for (long line = text.Send(Sci::SCI_LINEFROMPOSITION, start); line <= last; line++)
        if (!EachInLine(line, start, visit))
            break;
    return last + 1 < text.Send(Sci::SCI_GETLINECOUNT) ? text.Send(Sci::SCI_POSITIONFROMLINE, last + 1) : length + 1;
}

bool TextFinder::EachInLine(long number, long start, const Visit& visit) const
{
    if (search.text.empty() || !IsValid())
        return false;
    const long lineStart = text.Send(Sci::SCI_POSITIONFROMLINE, number);
    const std::string bytes = text.Copy(lineStart, text.Send(Sci::SCI_GETLINEENDPOSITION, number));
    const Line line(bytes);
    for (auto matches = expression.globalMatch(line.Characters()); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const Selection range = {lineStart + line.ByteOf(match.capturedStart()),
                                 lineStart + line.ByteOf(match.capturedEnd())};
        if (range.start >= start && !visit({range, GroupsOf(match, line, bytes)}))
            return false;
    }
    return true;
}

std::optional<Selection> TextFinder::FindPlain(long start, long end) const
{
    if (search.text.empty())
        return std::nullopt;
    if (!search.wholeWords)
        return FindBytes(start, end);
    text.Send(Sci::SCI_SETSEARCHFLAGS,
              (search.matchCase ? Sci::SCFIND_MATCHCASE : 0) | (search.wholeWords ? Sci::SCFIND_WHOLEWORD : 0));
    text.Send(Sci::SCI_SETTARGETSTART, start);
    text.Send(Sci::SCI_SETTARGETEND, end);
    if (text.Send(Sci::SCI_SEARCHINTARGET, static_cast<long>(search.text.size()), search.text.data()) < 0)
        return std::nullopt;
    return Selection{text.Send(Sci::SCI_GETTARGETSTART), text.Send(Sci::SCI_GETTARGETEND)};
}

// Scintilla takes several times as long.
std::optional<Selection> TextFinder::FindBytes(long start, long end) const
{
    const long from = std::min(start, end);
    const std::string_view in = text.Pointer(from, std::max(start, end));
    const std::string& wanted = search.text;
    const auto same = [this](char a, char b) { return search.matchCase ? a == b : Lower(a) == Lower(b); };
    const auto found = start <= end ? std::search(in.begin(), in.end(), wanted.begin(), wanted.end(), same)
                                    : std::find_end(in.begin(), in.end(), wanted.begin(), wanted.end(), same);
    if (found == in.end())
        return std::nullopt;
    const long at = from + (found - in.begin());
    return Selection{at, at + static_cast<long>(wanted.size())};
}

std::string TextFinder::Replacement(const Found& found, const std::string& with) const
{
    if (!search.regularExpression)
        return with;
    constexpr const char* kEnds[] = {"\r\n", "\r", "\n"}; // as SC_EOL_... count
    std::string result;
    for (size_t at = 0; at < with.size(); at++) {
        if (with[at] != '\\' || at + 1 == with.size()) {
            result += with[at];
            continue;
        }
        const char c = with[++at];
        if (c >= '0' && c <= '9')
            result += static_cast<size_t>(c - '0') < found.groups.size() ? found.groups[c - '0'] : "";
        else if (c == 'n')
            result += kEnds[text.Send(Sci::SCI_GETEOLMODE)];
        else
            result += c == 't' ? '\t' : c;
    }
    return result;
}

long TextFinder::Replace(const Found& found, const std::string& with) const
{
    const std::string replacement = Replacement(found, with);
    text.Replace(found.range.start, found.range.end, replacement);
    return found.range.start + static_cast<long>(replacement.size());
}

long TextFinder::ReplaceAll(const std::string& with) const
{
    std::vector<Found> all;
    Each(0, [&](const Found& found) {
        all.push_back(found);
        return true;
    });
    // From the end, so that what was found before stays where it was found.
    std::for_each(all.rbegin(), all.rend(), [&](const Found& found) { Replace(found, with); });
    return static_cast<long>(all.size());
}

long TextFinder::Count(long atMost) const
{
    long count = 0;
    Each(0, [&](const Found&) { return ++count < atMost; });
    return count;
}

} // namespace wren
