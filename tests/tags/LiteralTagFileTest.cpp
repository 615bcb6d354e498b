#include "tests/tags/LiteralTagFile.h"
#include "tests/tagsfile/Sequence.h"

namespace {

const std::string kNames[] = {"a",  "ab",    "a<b>",    "a<",   "<a>",  "<",           "",     "\t",
                              "!a", "init:", "init:b:", "a::b", "A::a", "operator<=>", "\xff", std::string("a\0b", 3)};
const std::string kFiles[] = {"a.cpp", "b.h", "gone", "./a.cpp", "a\\.cpp", "..", "", "/", "\\"};
const std::string kPositions[] = {"12", "", "-1", " 7x", "/a/", "99999999999999999999", ";", "\""};
const std::string kKinds[] = {"f", "function", "", ";", "\n", "\t"};
const std::string kScopes[] = {"class:A",        "class:struct:A", "A",          "",
                               "namespace:B::A", "class:A\tfile:", "class:A<b>", "class:"};
const std::string kEnds[] = {"\n", "\n", "\n", "\n", "\r\n", "", "\n\n", std::string(1100, 'a') + "\n"};
const std::string kPatterns[] = {"a",   "a<b>", "a<",          "<a>",     "<",    "",
                                 "\ta", "!a",   "init:",       "init:b:", "A::a", "B::A::a",
                                 "A::", "::a",  "operator<=>", "\xff",    "a\tb", std::string("a\0b", 3)};

std::string Line(Sequence& sequence)
{
    return sequence.One(kNames) + "\t" + sequence.One(kFiles) + "\t" + sequence.One(kPositions) + ";\"\t" +
           sequence.One(kKinds) + "\t" + sequence.One(kScopes) + sequence.One(kEnds);
}

} // namespace

TEST(LiteralTagFile, FindsTheSameAsTheRealReaderInRandomLines)
{
    Sequence sequence;
    const TagsFolder folder;
    size_t matches = 0;
    for (int round = 0; round < 40; ++round) {
        std::string tags;
        for (int line = 0; line < 60; ++line)
            tags += Line(sequence);
        folder.directory.Write("tags", tags);
        for (const std::string& pattern : kPatterns) {
            for (LiteralMatch match : {LiteralMatch::Exact, LiteralMatch::Partial, LiteralMatch::Any}) {
                for (bool stop : {false, true}) {
                    const Lines expected = LiteralTagFile(folder.Tags(), pattern, match, stop).All();
                    ASSERT_EQ(RealMatches(folder.Tags(), pattern, match, stop), expected) << pattern << "\n" << tags;
                    matches += expected.size() - 1;
                }
            }
        }
    }
    EXPECT_GT(matches, 1000u) << "there was something to find";
}
