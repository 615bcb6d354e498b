#include "resolve/ParsedText.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace resolve {

ParsedText::ParsedText(std::string path, std::string_view text, tagging::TextParser& parser,
                       std::optional<tagging::Language> language, const ParsedText* before)
    : path(std::move(path)), givenLanguage(language), text(text), tokens(this->text)
{
    auto result = before != nullptr && !before->problem
                      ? parser.ParseChanged(this->path, this->text, {before->text, *before->parsed}, language)
                      : parser.Parse(this->path, this->text, tagging::TextParser::Locals::No, language);
    if (result) {
        parsed = std::move(*result);
    } else {
        parsed = std::make_unique<tagging::ParsedSource>();
        problem = result.Failure();
    }
}

bool ParsedText::IsObjectiveC() const
{
    return parsed->language == tagging::Language::ObjectiveC ||
           parsed->language == tagging::Language::ObjectiveCplusplus;
}

bool ParsedText::IsCplusplus() const
{
    return parsed->language == tagging::Language::Cplusplus ||
           parsed->language == tagging::Language::ObjectiveCplusplus;
}

ParsedTextPointer ParsedTexts::Get(const std::string& path, std::string_view text, tagging::TextParser& parser,
                                   std::optional<tagging::Language> language)
{
    std::promise<ParsedTextPointer> promise;
    std::shared_future<ParsedTextPointer> found;
    ParsedTextPointer before;
    size_t number = 0;
    {
        const std::lock_guard lock(mutex);
        found = Find(path, text, language);
        if (!found.valid()) {
            before = Before(path, language);
            number = ++numbers;
            last.push_back({path, language, std::string(text), promise.get_future().share(), nullptr, number});
        }
    }
    if (found.valid())
        return found.get();
    try {
        auto made = std::make_shared<const ParsedText>(path, text, parser, language, before.get());
        Keep(number, made);
        promise.set_value(made);
        return made;
    } catch (...) {
        Keep(number, nullptr);
        promise.set_exception(std::current_exception());
        throw;
    }
}

// With the lock.
std::shared_future<ParsedTextPointer> ParsedTexts::Find(const std::string& path, std::string_view text,
                                                        std::optional<tagging::Language> language)
{
    const auto found = std::ranges::find_if(
        last, [&](const Kept& each) { return each.path == path && each.language == language && each.Text() == text; });
    if (found == last.end())
        return {};
    std::rotate(found, found + 1, last.end());
    return last.back().made;
}

// With the lock. The last text of that path that is parsed.
ParsedTextPointer ParsedTexts::Before(const std::string& path, std::optional<tagging::Language> language) const
{
    const auto found = std::ranges::find_if(
        last, [&](const Kept& each) { return each.path == path && each.language == language && each.done != nullptr; });
    return found == last.end() ? nullptr : found->done;
}

// Of two versions of a text that are parsed at once, the one that was asked for last stays.
void ParsedTexts::Keep(size_t number, const ParsedTextPointer& made)
{
    const std::lock_guard lock(mutex);
    const auto own = std::ranges::find(last, number, &Kept::number);
    own->done = made;
    own->text = {};
    const bool isOld = std::ranges::any_of(
        last, [&](const Kept& each) { return each.path == own->path && each.done != nullptr && each.number > number; });
    if (made == nullptr || isOld)
        last.erase(own);
    else
        std::erase_if(last, [path = own->path, number](const Kept& each) {
            return each.path == path && each.done != nullptr && each.number < number;
        });
    DropOldest();
}

// With the lock. The latest text is kept, however long it is.
void ParsedTexts::DropOldest()
{
    size_t texts = 0;
    size_t bytes = 0;
    for (size_t i = last.size(); i-- > 0;) {
        bytes += last[i].Text().size();
        if (last[i].done != nullptr && ++texts > 1 && (texts > kMostTexts || bytes > kMostBytes))
            last.erase(last.begin() + static_cast<std::ptrdiff_t>(i));
    }
}

} // namespace resolve
