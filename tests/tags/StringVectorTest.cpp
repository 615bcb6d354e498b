#include "tags/StringVector.h"

#include <gtest/gtest.h>

namespace {

using Strings = std::vector<std::string>;

StringVector Of(const Strings& strings)
{
    StringVector vector;
    for (const std::string& string : strings)
        vector.PushBackUnique(string.c_str());
    return vector;
}

std::string Common(const Strings& strings)
{
    std::string common = "was there before";
    Of(strings).CommonSubstring(common);
    return common;
}

TEST(StringVector, KeepsInsertionOrderWithoutDuplicates)
{
    const StringVector vector = Of({"b", "a", "b", "c", "a"});
    EXPECT_EQ(vector.Strings(), (Strings{"b", "a", "c"}));
    EXPECT_EQ(vector.Size(), 3u);
}

TEST(StringVector, ComparesWholeStrings)
{
    const Strings strings = {"a", "A", "ab", "", "a ", "\xc3\xa9", "\xe9"};
    EXPECT_EQ(Of(strings).Strings(), strings);
}

TEST(StringVector, IsEmptyOnceCleared)
{
    StringVector vector = Of({"a", "b"});
    vector.Clear();
    EXPECT_EQ(vector.Strings(), Strings{});
    vector.PushBackUnique("a");
    EXPECT_EQ(vector.Strings(), Strings{"a"});
}

struct CommonCase {
    const char* why;
    Strings strings;
    const char* common;
};

const CommonCase kCommon[] = {
    {"none", {}, ""},
    {"one is its own", {"NSString"}, "NSString"},
    {"what all begin with", {"NSString", "NSStream", "NSStringEncoding"}, "NSStr"},
    {"the shortest may be all of it", {"NSStringEncoding", "NSString"}, "NSString"},
    {"or stand in the middle", {"abcd", "ab", "abc"}, "ab"},
    {"an empty one has nothing in common", {"abc", ""}, ""},
    {"nor have strings that differ at once", {"abc", "xbc"}, ""},
    {"case counts", {"draw", "Draw"}, ""},
    {"only a beginning counts, not what they have in common elsewhere", {"getSize", "setSize"}, ""},
    {"nor what is common behind a difference", {"aXcde", "aYcde"}, "a"},
    {"bytes are compared, not characters", {"\xc3\xa9", "\xc3\xa8"}, "\xc3"},
    {"the last one counts too", {"abc", "abd", "b"}, ""},
};

TEST(StringVector, FindsTheCommonPrefix)
{
    for (const CommonCase& row : kCommon)
        EXPECT_EQ(Common(row.strings), row.common) << row.why;
}

TEST(StringVector, DumpsOneLinePerString)
{
    testing::internal::CaptureStdout();
    Of({"b", "", "a%s"}).Dump();
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "b\n\na%s\n");
}

} // namespace
