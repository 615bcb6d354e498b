// What a name without a receiver can mean, and the order of meanings.
#pragma once

#include "resolve/Classes.h"
#include "resolve/Kinds.h"
#include "resolve/Meaning.h"
#include "resolve/Usage.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace resolve {

class Names {
public:
    Names(World& world, Classes& classes) : world(world), classes(classes) {}

    // The scopes around a line of the text, from the inside out; the first is that of the innermost class or namespace.
    std::vector<std::string> ScopesAt(unsigned line);
    // The function around a line; null outside of functions.
    const Symbol* FunctionAt(unsigned line);

    // From the inside out; unreachable ones at the end, as found by name. Ranked.
    MeaningList Unqualified(std::string_view name, unsigned line, const Usage& use);
    // "qualifier::name".
    MeaningList Qualified(std::string_view qualifier, std::string_view name, unsigned line, const Usage& use);
    // Members of classes, nearest first; the classes are alternatives.
    MeaningList Members(const std::vector<Class>& of, std::string_view name, const Usage& use, const std::string& why);
    // Members of any class.
    MeaningList AnyMember(std::string_view name, const Usage& use);

    void Rank(MeaningList& meanings, const Usage& use, unsigned line);

    std::map<std::string, int> VisibleScopes(unsigned line); // and how far out they are

private:
    void AddScope(std::map<std::string, int>& levels, const std::string& scope, int level);
    bool IsVisible(const Symbol& symbol);
    static void PutClassFirst(MeaningList& meanings);

    World& world;
    Classes& classes;
    unsigned levelsLine = 0;
    std::map<std::string, int> levels;
};

} // namespace resolve
