#include "tags/Candidates.h"

#include "tags/StringVector.h"
#include "tags/Tags.h"
#include "tests/tags/TagsFolder.h"

namespace {

TEST(Candidates, AreFoundWithoutAWindow)
{
    const TagsFolder local(TagLine("nab", "a.cpp", 1, "f", "class:A") + TagLine("nab", "a.cpp", 2, "f", "class:A") +
                           TagLine("nac", "a.cpp", 3, "f") + TagLine("z", "a.cpp", 4, "f"));
    const BEntry entry = local.Entry();
    Tags tags(&entry, nullptr, "na", false);
    StringVector found;
    found.PushBackUnique("was there before");
    FindCandidates(tags, found, 1000);
    EXPECT_EQ(found.Strings(), (Lines{"A::nab", "nac"}));
    FindCandidates(tags, found, 1);
    EXPECT_EQ(found.Strings(), Lines{"A::nab"});
}

struct BeginningCase {
    const char* why;
    Lines candidates;
    const char* common;
};

const BeginningCase kBeginnings[] = {
    {"none", {}, ""},
    {"one is its own", {"name"}, "name"},
    {"what all begin with", {"nameA", "nameB"}, "name"},
    {"two characters that differ in their second bytes", {"caf\xc3\xa9", "caf\xc3\xa8"}, "caf"},
    {"nothing but such a character", {"\xc3\xa9", "\xc3\xa8"}, ""},
    {"a whole character", {"caf\xc3\xa9s", "caf\xc3\xa9t"}, "caf\xc3\xa9"},
    {"one is the beginning of the others", {"caf\xc3\xa9", "caf\xc3\xa9s"}, "caf\xc3\xa9"},
};

TEST(Candidates, HaveABeginningOfWholeCharactersInCommon)
{
    for (const BeginningCase& row : kBeginnings) {
        StringVector candidates;
        for (const std::string& candidate : row.candidates)
            candidates.PushBackUnique(candidate.c_str());
        EXPECT_EQ(CommonBeginning(candidates), row.common) << row.why;
    }
}

} // namespace
