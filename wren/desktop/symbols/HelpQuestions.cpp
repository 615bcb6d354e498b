#include "wren/desktop/symbols/HelpQuestions.h"

#include "wren/desktop/symbols/AskedSubject.h"
#include "wren/desktop/symbols/RowText.h"

#include <QCoreApplication>
#include <QStringList>

#include <algorithm>
#include <map>
#include <memory>
#include <string_view>

namespace wren {

namespace {

constexpr size_t kMostCandidates = 100;
constexpr int kMostLines = 16;       // of a comment
constexpr size_t kMostOverloads = 6; // that are shown

QString Tr(const char* text)
{
    return QCoreApplication::translate("wren::HelpQuestions", text);
}

QString Escaped(std::string_view bytes)
{
    return Shown(bytes).toHtmlEscaped();
}

// Keeps line breaks and indentation, and still wraps.
QString Code(std::string_view bytes)
{
    return "<div style='white-space: pre-wrap'>" + Escaped(bytes) + "</div>";
}

QString Comment(const std::string& comment)
{
    QStringList lines = Escaped(comment).split('\n');
    if (lines.size() > kMostLines) {
        lines = lines.mid(0, kMostLines);
        lines << "\u2026";
    }
    return "<p>" + lines.join("<br>") + "</p>";
}

QString Label(const CallHelp::Overload& overload, bool isActive, size_t parameter)
{
    const std::string_view label = overload.label;
    if (!isActive || parameter >= overload.parameters.size())
        return Escaped(label);
    const auto [begin, end] = overload.parameters[parameter];
    return Escaped(label.substr(0, begin)) + "<b>" + Escaped(label.substr(begin, end - begin)) + "</b>" +
           Escaped(label.substr(end));
}

} // namespace

std::optional<MeaningCard> MeaningAt(const AskedText& asked, const Question& question)
{
    const AskedSubject subject(asked, question);
    std::map<std::string, std::unique_ptr<KeptSource>> kept;
    const auto read = [&](const std::string& path) -> std::optional<SourceText> {
        std::unique_ptr<KeptSource>& source = kept[path];
        if (source == nullptr)
            if (std::optional<std::string> text = subject.TextOf(path))
                source = std::make_unique<KeptSource>(std::move(*text));
        return source == nullptr ? std::nullopt : std::optional(source->Source());
    };
    const resolve::Answers answers = subject.Resolver().Meanings(subject.Place(), subject.Limits(kMostCandidates));
    return CardOf(answers.found, subject.Snapshot(), read);
}

std::optional<CallHelp> CallAt(const AskedText& asked, const Question& question)
{
    const AskedSubject subject(asked, question);
    const resolve::ParsedTextPointer parsed = subject.Parsed();
    const resolve::Place place = subject.Place();
    return CallHelpAt({subject.Resolver(), subject.Snapshot(), *parsed, place, &question.cancel});
}

QString RichTextOf(const MeaningCard& card)
{
    QString text;
    if (!card.scope.empty())
        text += "<i>" + Tr("in %1").arg(Escaped(card.scope)) + "</i>";
    if (!card.declaration.empty())
        text += Code(card.declaration);
    if (!card.value.empty())
        text += Code("= " + card.value);
    if (!card.comment.empty())
        text += Comment(card.comment);
    text += "<p><small>" + Escaped(card.place);
    if (card.others > 0)
        text += " \u00b7 " + Tr("and %1 more").arg(card.others);
    if (card.isFoundByName)
        text += " \u00b7 " + Tr("found by its name");
    return text + "</small></p>";
}

// The active one is always among those that are shown.
QString RichTextOf(const CallHelp& help)
{
    const size_t count = help.overloads.size();
    const size_t first = help.active < kMostOverloads ? 0 : help.active + 1 - kMostOverloads;
    QStringList lines;
    for (size_t at = first; at < std::min(first + kMostOverloads, count); ++at)
        lines << Label(help.overloads[at], at == help.active, help.parameter);
    if (lines.size() < static_cast<qsizetype>(count))
        lines << "<small>" + Tr("%1 of %2").arg(lines.size()).arg(count) + "</small>";
    return lines.join("<br>");
}

} // namespace wren
