#include "resolve/ParsedText.h"

#include <algorithm>

namespace resolve {

ParsedText::ParsedText(std::string path, std::string_view text, tagging::TextParser& parser,
                       std::optional<tagging::Language> language)
    : path(std::move(path)), givenLanguage(language), text(text), tokens(this->text)
{
    auto result = parser.Parse(this->path, this->text, tagging::TextParser::Locals::No, language);
    if (result)
        parsed = std::move(*result);
    else
        parsed = std::make_unique<tagging::ParsedSource>();
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
    const auto isIt = [&](const ParsedTextPointer& each) {
        return each->path == path && each->givenLanguage == language && each->text == text;
    };
    {
        const std::lock_guard lock(mutex);
        const auto found = std::find_if(last.begin(), last.end(), isIt);
        if (found != last.end()) {
            std::rotate(found, found + 1, last.end());
            return last.back();
        }
    }
    auto made = std::make_shared<const ParsedText>(path, text, parser, language);
    const std::lock_guard lock(mutex);
    std::erase_if(last, [&](const ParsedTextPointer& each) { return each->path == path; });
    if (last.size() == kKept)
        last.erase(last.begin());
    last.push_back(made);
    return made;
}

} // namespace resolve
