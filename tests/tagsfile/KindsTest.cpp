#include "tagsfile/Kinds.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace tagsfile {
namespace {

TEST(Kinds, StandInTheTableOnceEach)
{
    std::set<char> letters;
    for (const Kind& kind : kKinds)
        EXPECT_TRUE(letters.insert(kind.letter).second) << kind.letter;
}

TEST(Kinds, DefinitionsAreFunctionsAndWhatImplementationsHold)
{
    std::string definitions;
    for (int letter = 0; letter < 256; ++letter)
        if (KindOf(static_cast<char>(letter)).isDefinition)
            definitions += static_cast<char>(letter);
    EXPECT_EQ(definitions, "ORfo");
}

TEST(Kinds, AnUnknownLetterIsADeclarationThatMakesNoScope)
{
    const Kind kind = KindOf('?');
    EXPECT_EQ(kind.letter, '?');
    EXPECT_EQ(kind.prefix, Kind::Prefix::None);
    EXPECT_FALSE(kind.isDefinition);
    EXPECT_EQ(kind.scopeWord, "");
}

TEST(Kinds, ScopeWordsAreThoseOfTheKindsThatMakeScopes)
{
    std::vector<std::string_view> words;
    for (const Kind& kind : kKinds)
        if (!kind.scopeWord.empty())
            words.push_back(kind.scopeWord);
    EXPECT_EQ(words, std::vector<std::string_view>(std::begin(kScopeWords), std::end(kScopeWords)));
    EXPECT_EQ(words, (std::vector<std::string_view>{"class:", "namespace:", "struct:", "union:"}));
}

} // namespace
} // namespace tagsfile
