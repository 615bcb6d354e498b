#include "symbols/store/TextTable.h"

#include <gtest/gtest.h>

#include <map>

using namespace symbols;

namespace {

// More than the first few sizes of its table, with many repetitions.
std::vector<std::string> ManyTexts()
{
    std::vector<std::string> texts;
    for (unsigned i = 0; i < 20'000; i++)
        texts.push_back(i % 5 == 0 ? "" : "text" + std::to_string(i * 2654435761u % 3001));
    return texts;
}

TEST(TextTable, GivesEqualTextsTheSameNumber)
{
    TextTable table;
    std::map<std::string, TextNumber> numbers;
    for (const std::string& text : ManyTexts()) {
        const TextNumber number = table.Put(text);
        EXPECT_EQ(numbers.emplace(text, number).first->second, number);
        EXPECT_EQ(table.Text(number), text);
    }
    EXPECT_EQ(numbers.size(), table.Count());
    EXPECT_EQ(table.Put(""), 0u);
}

TEST(TextTable, GivesManyTextsAtOnceTheNumbersThatTheyHaveOneByOne)
{
    const std::vector<std::string> texts = ManyTexts();
    TextTable oneByOne, atOnce;
    std::vector<TextNumber> expected, numbers;
    for (const std::string& text : texts)
        expected.push_back(oneByOne.Put(text));
    const std::vector<std::string_view> views(texts.begin(), texts.end());
    const std::span<const std::string_view> all = views;
    atOnce.Put(all.first(3), numbers);
    atOnce.Put(all.subspan(3, 0), numbers);
    atOnce.Put(all.subspan(3, 9'000), numbers);
    atOnce.Put(all.subspan(9'003), numbers);
    EXPECT_EQ(numbers, expected);
    EXPECT_EQ(atOnce.Bytes(), oneByOne.Bytes());
}

} // namespace
