// Sources that are damaged or incomplete, and files that are not sources.
#include "tagging/objectivec/ObjectiveC.h"

#include "tests/tagging/objectivec/ObjectiveCReading.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

namespace {

using namespace std::string_literals;

struct Case {
    const char* why;
    std::string source;
    TagTexts tags;
};

std::string Repeated(const std::string& text, size_t size)
{
    std::string all;
    all.reserve(size + text.size());
    while (all.size() < size)
        all += text;
    return all;
}

// Checks what holds for any text.
void CheckReading(const std::string& source)
{
    const tagging::ObjectiveCSource read = tagging::ReadObjectiveC(source, {"IGNORED", "UNUSED+"});
    const auto lines = std::count(source.begin(), source.end(), '\n') + 1;
    EXPECT_EQ(std::count(read.rest.begin(), read.rest.end(), '\n') + 1, lines) << source;
    for (const tagsfile::Tag& tag : read.tags.tags) {
        EXPECT_FALSE(tag.name.empty()) << source;
        EXPECT_EQ(tag.name.find_first_of("\t\n\r \\"), std::string_view::npos) << source;
        EXPECT_GE(tag.line, 1u) << source;
        EXPECT_LE(tag.line, static_cast<unsigned>(lines)) << source;
        EXPECT_NE(std::string_view("XRPCmMoOyv").find(tag.kind), std::string_view::npos) << source;
        EXPECT_TRUE(tag.scope.empty() || tag.scope.starts_with("class:")) << source;
    }
    // Nothing is added: apart from enumerations, the rest is unchanged.
    if (source.find("_ENUM") == std::string::npos && source.find("_OPTIONS") == std::string::npos) {
        const auto isLeft = [](char left, char was) { return left == was || left == ' '; };
        EXPECT_TRUE(std::equal(read.rest.begin(), read.rest.end(), source.begin(), source.end(), isLeft)) << source;
    }
}

const std::vector<std::string>& Samples()
{
    static const std::vector<std::string> samples = [] {
        std::vector<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/objective-c")) {
            std::ifstream file(entry.path(), std::ios::binary);
            all.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
        std::sort(all.begin(), all.end());
        return all;
    }();
    return samples;
}

} // namespace

TEST(ObjectiveCDamaged, TheDeclarationAfterTheDamageIsFound)
{
    const Case cases[] = {
        {"no @end",
         "@interface A\n- b;\n@interface C\n- d;\n@protocol E\n- f;\n@implementation G\n- h { }\n",
         {"X A", "m b A", "X C", "m d C", "P E", "m f E", "R G", "o h G"}},
        {"variables without their end",
         "@interface A {\n  int b;\n- c;\n@end\n@interface D\n@end",
         {"X A", "v b A", "m c A", "X D"}},
        {"a body without its end",
         "@implementation A\n- b {\n  if (c) {\n}\n@end\n@implementation D\n- e { }\n@end",
         {"R A", "o b A", "R D", "o e D"}},
        {"and a method after it",
         "@implementation A\n- (int) b {\n  if (c) {\n}\n- (int) d { }\n+ (int) e { }\n@end",
         {"R A", "o b A", "o d A", "O e A"}},
        {"a function without its end",
         "@implementation A\nint b() {\n  if (c) {\n}\n- (int) d { }\n@end",
         {"R A", "o d A"}},
        {"a brace too many", "@implementation A\n- b { } }\n- c { }\n@end", {"R A", "o b A", "o c A"}},
        {"a parenthesis too many", "@interface A\n- b: (int))c;\n- d;\n@end", {"X A", "m b: A", "m d A"}},
        {"a parenthesis missing", "@interface A\n- b: (int c;\n- d;\n@end", {"X A", "m b: A", "m d A"}},
        {"an angle missing", "@interface A : B <C\n{\n  int d;\n}\n- e;\n@end", {"X A", "v d A", "m e A"}},
        {"a property without its end",
         "@interface A\n@property int b\n@property int c\n- d;\n@end",
         {"X A", "y b A", "y c A", "m d A"}},
        {"a string without its end",
         "@implementation A\n- b { c(@\"); }\n}\n- d { f('); }\n}\n@end",
         {"R A", "o b A", "o d A"}},
        {"a comment without its end", "@interface A\n- b;\n/* - c;\n@end", {"X A", "m b A"}},
        {"no name", "@interface\n- a;\n@end\n@implementation : b\n@end\n@protocol\n@interface C\n@end", {"X C"}},
        {"a method outside of classes", "- a;\n+ b { }\n@property int c;\n@interface D\n@end\n- e;", {"X D"}},
        {"a method without a name", "@interface A\n- ;\n- (int);\n- (int) {\n+\n@end", {"X A"}},
        {"a property without a name", "@interface A\n@property;\n@property (nonatomic)\n@property (\n@end", {"X A"}},
        {"the end in the middle", "@interface A : B\n- (int) c: (int)d e", {"X A", "m c: A"}},
        {"or of a header", "@interface A", {"X A"}},
        {"or after a sign", "@interface A\n-", {"X A"}},
        {"NUL bytes", "@interface\0A\0\n-\0(int)\0b\0;\n@end\0"s, {"X A", "m b A"}},
        {"line breaks of another system",
         "@interface A\r\n- (int)\r\n b: (int)c // d\r\n e: (int)f;\r\n@end\r\n",
         {"X A", "m b:e: A"}},
        {"only an '@'", "@", {}},
        {"nothing", "", {}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(TagsOf(c.source), c.tags) << c.why << "\n" << c.source;
        CheckReading(c.source);
    }
}

TEST(ObjectiveCDamaged, TruncatedSourcesAreRead)
{
    for (const std::string& sample : Samples())
        for (size_t size = 0; size < sample.size(); size += 7)
            CheckReading(sample.substr(0, size));
}

TEST(ObjectiveCDamaged, SourcesWithRandomBytesAreRead)
{
    std::mt19937 random(1);
    const std::string marks = "@{}()<>[];:,-+*^\"'/#\\\n\r";
    for (const std::string& sample : Samples()) {
        for (int round = 0; round < 40; ++round) {
            std::string source = sample;
            for (int change = 0; change < 20; ++change) {
                const char byte = random() % 4 == 0 ? static_cast<char>(random()) : marks[random() % marks.size()];
                source[random() % source.size()] = byte;
            }
            CheckReading(source);
        }
    }
}

TEST(ObjectiveCDamaged, RandomSequencesOfKeywordsAreRead)
{
    const char* words[] = {"@interface", "@implementation",
                           "@protocol",  "@end",
                           "@property",  "@class",
                           "@private",   "- ",
                           "+ ",         "(",
                           ")",          "{",
                           "}",          "<",
                           ">",          "[",
                           "]",          ";",
                           ":",          ",",
                           "=",          "*",
                           "^",          "@",
                           "@\"",        "\"",
                           "'",          "R\"(",
                           ")\"",        "/*",
                           "*/",         "//",
                           "\n#if 0\n",  "\n#if A\n",
                           "\n#else\n",  "\n#elif 0\n",
                           "\n#endif\n", "\n#define ",
                           "\\\n",       "\n",
                           " ",          "A",
                           "b",          "struct",
                           "enum",       "operator",
                           "NS_ENUM",    "IGNORED",
                           "UNUSED",     "...",
                           "->",         "1'0"};
    std::mt19937 random(2);
    for (int round = 0; round < 3000; ++round) {
        std::string source;
        for (unsigned long size = random() % 60; size > 0; --size)
            source += words[random() % std::size(words)] + std::string(random() % 2, ' ');
        CheckReading(source);
    }
}

// Each part is read a few times at most: with a quadratic step this would take hours.
TEST(ObjectiveCDamaged, ReadingTakesLinearTime)
{
    constexpr size_t kSize = 300'000;
    constexpr size_t kLarge = 10'000'000;
    const char* texts[] = {"(",          "{",          "<",     "@interface ", "@interface A\n- b",
                           "@protocol ", "@protocol(", "@",     "#if 0\n",     "#if A\n@interface B\n",
                           "R\"(",       "R\"x",       "/*",    "/",           "\"",
                           "'",          "\\\n",       "a\\\n", "#",           "#\\\n",
                           "- ",         "a ",         "a:",    "a,",          "NS_ENUM(",
                           "UNUSED(",    "\n- ",       "}\n- ("};
    const char* beginnings[] = {"",
                                "@interface A\n",
                                "@interface A {\n",
                                "@interface A\n- b: ",
                                "@implementation A\n- b {\n",
                                "@implementation A\nint b = {\n",
                                "@class "};
    for (const char* beginning : beginnings)
        for (const char* text : texts)
            tagging::ReadObjectiveC(beginning + Repeated(text, kSize), {"UNUSED+"});
    tagging::ReadObjectiveC("@interface A { int " + Repeated("(*", kLarge / 2), {});
    tagging::ReadObjectiveC(Repeated("@interface A { int " + Repeated("(*", 4000) + " ;\n", kLarge / 2), {});
    CheckReading(Repeated("@interface A\n- (int) b: (int)c d: (int)e;\n@end\n", kLarge));
}
