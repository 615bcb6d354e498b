// Tags files made of nothing but names.
#pragma once

#include "tags/NameAndQualifier.h"
#include "tests/support/TagLines.h"
#include "tests/tags/TagsFolder.h"

#include <string>
#include <vector>

// A line for each name in that order, all of them in "a.cpp"; "A::b" stands in class A.
inline std::string TagsOf(const Lines& fullNames)
{
    std::string tags;
    for (const std::string& full : fullNames) {
        std::string name;
        std::string qualifier;
        NameAndQualifier::Split(full, name, qualifier);
        tags += TagLine(name, "a.cpp", 1, 'f', qualifier.empty() ? "" : "class:" + qualifier);
    }
    return tags;
}

// "name000", "name001", ...
inline Lines Numbered(const std::string& name, int count)
{
    Lines names;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        names.push_back(name + std::string(std::max<size_t>(3, number.length()) - number.length(), '0') + number);
    }
    return names;
}
