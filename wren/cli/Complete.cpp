#include "wren/cli/Complete.h"

#include "base/Identifier.h"
#include "scan/CompletionEdit.h"
#include "scan/PatternScan.h"
#include "scan/Text.h"
#include "scan/WordScan.h"
#include "tags/Candidates.h"
#include "tags/CompletionCache.h"
#include "tags/StringVector.h"
#include "tags/Tags.h"
#include "vetch/support/Cancellation.h"
#include "vetch/support/FThread.h"
#include "vetch/support/ThreadStart.h"
#include "wren/cli/SourcePlace.h"
#include "wren/text/PlainText.h"

#include <cctype>
#include <utility>

namespace wren {

namespace {

using Outcome = CompleteResult::Outcome;

size_t BeginOfName(const std::string& text, size_t offset)
{
    while (offset > 0 && base::IsIdentifierCharacter(text[offset - 1]))
        --offset;
    return offset;
}

size_t EndOfName(const std::string& text, size_t offset)
{
    while (offset < text.size() && base::IsIdentifierCharacter(text[offset]))
        ++offset;
    return offset;
}

PlainText Edited(const SourcePlace& source, const scan::Edit& edit)
{
    PlainText text;
    text.SetText(source.text);
    text.Delete(edit.start, edit.end - edit.start);
    text.Insert(edit.start, edit.text);
    return text;
}

// An edit without a change completes nothing.
void ReadEdit(const SourcePlace& source, const scan::Edit& edit, CompleteResult& result)
{
    const PlainText edited = Edited(source, edit);
    const std::string text = edited.Text();
    result.outcome = text == source.text ? Outcome::NoCompletion : Outcome::Inserted;
    const long end = source.offset + edited.Length() - static_cast<long>(source.text.size()); // the edit ends there
    const long start = edited.LineStart(edited.LineAt(end));
    result.word = WordAround(text, std::min(source.offset, end), end);
    result.line = text.substr(start, edited.LineEnd(edited.LineAt(end)) - start);
}

void Offer(std::vector<std::string> candidates, CompleteResult& result)
{
    result.more = candidates.size() > kMostListedCandidates;
    if (result.more)
        candidates.resize(kMostListedCandidates);
    result.candidates = std::move(candidates);
    result.outcome = Outcome::Offered;
}

void AskByCommand(const SourcePlace& source, ServingTags& files, CompleteResult& result)
{
    result.outcome = Outcome::NoTags;
    if (!files.FindFrom(source.directory))
        return;
    const scan::StringText text(source.text);
    const std::optional<scan::Pattern> typed = scan::PatternForCompletion(text, source.offset, source.offset);
    result.outcome = typed ? Outcome::NoCompletion : Outcome::NoWord;
    if (!typed)
        return;
    Tags tags(files.Local(), files.System(), typed->text, false);
    StringVector candidates;
    FindCandidates(tags, candidates, kMostCandidates);
    const Suggestion suggestion = SuggestionFor(text, *typed, candidates);
    if (suggestion.action == Suggestion::Action::Offer)
        return Offer(candidates.Strings(), result);
    if (suggestion.action == Suggestion::Action::Insert)
        return ReadEdit(source, {source.offset, source.offset, suggestion.text, 0}, result);
    if (suggestion.action == Suggestion::Action::Replace)
        if (const auto edit = scan::CompletionEdit(text, source.offset, suggestion.text))
            ReadEdit(source, *edit, result);
}

scan::TypedWord WordTypedAt(const std::string& source, long caret)
{
    const std::optional<scan::WordPlace> word = scan::WordBefore(scan::StringText(source), caret);
    return word ? scan::TypedWord{caret, word->start, word->length} : scan::TypedWord();
}

// Whether to type the character before the caret completes the word that it stands in.
bool LastCharacterCompletes(const SourcePlace& source)
{
    if (source.offset == 0)
        return false;
    std::string before = source.text;
    before.erase(source.offset - 1, 1); // characters of words are single bytes
    return WordBeganOrGrew(WordTypedAt(before, source.offset - 1), WordTypedAt(source.text, source.offset));
}

// The candidates that the last key stroke offers. The first completing key stroke loads the names in the background
// instead.
std::vector<std::string> OfferedByKey(const SourcePlace& source, ServingTags& files, CompletionCache& cache)
{
    if (!LastCharacterCompletes(source) || !files.FindFrom(source.directory))
        return {};
    const auto typed = scan::PatternForCompletion(scan::StringText(source.text), source.offset, source.offset);
    if (!typed || typed->text.length() < kShortestTyped)
        return {};
    Tags tags(files.Local(), files.System(), typed->text, false);
    return cache.LoadIfNeeded(tags, true) ? CandidatesWhileTyping(cache, typed->text) : std::vector<std::string>();
}

void AskByTyping(const SourcePlace& source, ServingTags& files, CompleteResult& result)
{
    CompletionCache cache;
    OfferedByKey(source, files, cache);
    vetch::JoinThreads();
    std::vector<std::string> offered = OfferedByKey(source, files, cache);
    vetch::CancelReading(true); // a second load is not needed
    vetch::JoinThreads();
    vetch::CancelReading(false);
    if (!offered.empty())
        return Offer(std::move(offered), result);
    // Typing does not report missing tags files; the command does.
    CompleteResult byCommand;
    AskByCommand(source, files, byCommand);
    result.outcome = byCommand.outcome == Outcome::NoTags ? Outcome::NoTags : Outcome::NoCompletion;
}

} // namespace

CompleteResult Complete(const CompleteOptions& options)
{
    CompleteResult result;
    ServingTags files;
    if (!files.Prepare(options.tags, &result.error))
        return result;
    const std::optional<SourcePlace> source = ReadSource(options.place, WithoutColumn::LineEnd, &result.error);
    if (!source)
        return result;
    result.directory = source->shownDirectory;
    if (options.whileTyping)
        AskByTyping(*source, files, result);
    else
        AskByCommand(*source, files, result);
    if (result.outcome == Outcome::NoCompletion && vetch::ThreadsWereRefused()) {
        result.outcome = Outcome::Unusable;
        result.error = "the candidates cannot be listed without another thread";
    }
    return result;
}

std::string WordAround(const std::string& text, size_t start, size_t end)
{
    start = BeginOfName(text, start);
    while (start > 2 && text.compare(start - 2, 2, "::") == 0 && base::IsIdentifierCharacter(text[start - 3]))
        start = BeginOfName(text, start - 2);
    if (end > 0 && base::IsIdentifierCharacter(text[end - 1]))
        end = EndOfName(text, end);
    return text.substr(start, end - start);
}

} // namespace wren
