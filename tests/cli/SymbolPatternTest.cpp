#include "wren/cli/SymbolPattern.h"

#include <gtest/gtest.h>

namespace wren {

namespace {

struct Case {
    const char* why;
    const char* symbol;
    const char* pattern; // null for a symbol that is found only by its exact text
};

const Case kCases[] = {
    {"a name", "strcpy", "strcpy"},
    {"a qualified name", "Outer::Inner::name", "Outer::Inner::name"},
    {"template arguments", "TagWindow<Tags>::FitList", "TagWindow<Tags>::FitList"},
    {"template arguments at the end", "vector<int>", "vector<int>"},
    {"nested template arguments", "map<K, vector<V>>::value_type", "map<K, vector<V>>::value_type"},
    {"the scope that everything is in is left out", "std::string", "string"},
    {"a selector of one piece", "addObject:", "addObject:"},
    {"a selector of two pieces", "setObject:forKey:", "setObject:forKey:"},
    {"pieces of one letter", "a:b:c:", "a:b:c:"},
    {"an operator", "operator==", nullptr},
    {"a destructor", "~View", nullptr},
    {"nothing", "", nullptr},
    {"a blank", "two words", nullptr},
    {"no scope to its right", "Outer::", nullptr},
    {"arguments that do not end", "vector<int", nullptr},
    {"a name right behind arguments", "vector<int>x", nullptr},
    {"a text in the arguments", "f<'x'>", nullptr},
    {"a selector without its last colon", "putBook:onLevel", nullptr},
    {"a digit first", "3d", nullptr},
};

} // namespace

TEST(SymbolPattern, IsWhatALookupTakesFromASource)
{
    for (const Case& c : kCases) {
        const std::optional<std::string> pattern = PatternForSymbol(c.symbol);
        ASSERT_EQ(pattern.has_value(), c.pattern != nullptr) << c.why;
        if (pattern.has_value()) {
            EXPECT_EQ(*pattern, c.pattern) << c.why;
        }
    }
}

TEST(SymbolPattern, IsNoneForWhatNoEditorWouldScan)
{
    EXPECT_TRUE(PatternForSymbol(std::string(1024, 'x')).has_value());
    EXPECT_FALSE(PatternForSymbol(std::string(1025, 'x')).has_value());
    EXPECT_TRUE(PatternForSymbol(std::string(1023, 'x') + ":").has_value());
    EXPECT_FALSE(PatternForSymbol(std::string(1024, 'x') + ":").has_value());
}

} // namespace wren
