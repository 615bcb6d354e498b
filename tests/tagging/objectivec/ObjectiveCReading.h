// The results of ReadObjectiveC() in the form of the tests' expectations.
#pragma once

#include "tagging/objectivec/ObjectiveC.h"

#include <set>
#include <string>
#include <vector>

using TagTexts = std::vector<std::string>;

// "line kind name", and the class if there is one: "3 m first:second: Class".
inline TagTexts TagsWithLines(std::string_view source, const std::set<std::string>& ignored = {})
{
    const tagging::ObjectiveCSource read = tagging::ReadObjectiveC(source, ignored);
    constexpr std::string_view kClass = "class:";
    TagTexts texts;
    for (const tagsfile::Tag& tag : read.tags.tags) {
        std::string text = std::to_string(tag.line) + ' ' + tag.kind + ' ' + std::string(tag.name);
        if (!tag.scope.empty())
            text += ' ' + std::string(tag.scope.starts_with(kClass) ? tag.scope.substr(kClass.size()) : "no class");
        texts.push_back(text);
    }
    return texts;
}

inline TagTexts TagsOf(std::string_view source, const std::set<std::string>& ignored = {})
{
    TagTexts texts = TagsWithLines(source, ignored);
    for (std::string& text : texts)
        text.erase(0, text.find(' ') + 1);
    return texts;
}

inline std::string RestOf(std::string_view source, const std::set<std::string>& ignored = {})
{
    return tagging::ReadObjectiveC(source, ignored).rest;
}

// Shortens blanks to one, and removes those at ends of lines: a parser ignores their number.
inline std::string WithoutBlanks(std::string_view rest)
{
    std::string text;
    for (const char c : rest) {
        if (c == '\n')
            text.erase(text.find_last_not_of(' ') + 1);
        if (c != ' ' || (!text.empty() && text.back() != ' ' && text.back() != '\n'))
            text += c;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}
