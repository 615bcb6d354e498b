#include "cplustags/CtagsOutput.h"

#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

namespace cplustags {
namespace {

using Lines = std::vector<std::string>;

std::string Shown(const Tag& tag)
{
    std::string shown = std::string(tag.name) + " " + std::to_string(tag.line) + " " + tag.kind;
    if (!tag.scope.empty())
        shown += " " + std::string(tag.scope);
    return shown;
}

Lines Read(const std::string& output)
{
    Lines lines;
    for (const Tag& tag : ReadCtagsOutput(output).tags)
        lines.push_back(Shown(tag));
    return lines;
}

// What real ctags finds in a source, as it is read.
Lines TagsOf(const std::string& name, const std::string& source)
{
    const TempDirectory directory;
    std::vector<std::string> command = {"/usr/bin/env", "ctags"};
    for (const std::string& option : OptionsForOutput())
        command.push_back(option);
    for (const char* option : {"--kinds-C=+p", "--kinds-C++=+p", "-f", "-"})
        command.push_back(option);
    command.push_back(directory.Write(name, source));
    return Read(RunProgram(command, directory.Path()).output);
}

struct Case {
    const char* why;
    const char* output;
    Lines tags;
};

const Case kCases[] = {
    {"no scope", "f\ta.c\t3;\"\tf\n", {"f 3 f"}},
    {"a scope that lookups know", "f\ta.c\t3;\"\tf\tclass:A::B\n", {"f 3 f class:A::B"}},
    {"one that they do not know", "l\ta.c\t3;\"\ts\tfunction:main\n", {"l 3 s"}},
    {"properties are not for them", "f\ta.c\t3;\"\tf\tclass:A\tproperties:const,inline\n", {"f 3 f class:A"}},
    {"properties alone", "f\ta.c\t3;\"\tf\tproperties:static\n", {"f 3 f"}},
    {"anonymous parts of a scope", "m\ta.c\t3;\"\tm\tstruct:A::__anon1f0a::B\n", {"m 3 m struct:A::B"}},
    {"an anonymous namespace", "f\ta.c\t3;\"\tf\tnamespace:__anon1f0a\n", {"f 3 f"}},
    {"an anonymous struct has no name to look up", "__anon1f0a\ta.c\t3;\"\ts\n", {}},
    {"a name that only begins like it", "__anonymous\ta.c\t3;\"\ts\n", {"__anonymous 3 s"}},
    {"separators in template arguments", "f\ta.c\t3;\"\tf\tstruct:A<b::c>::__anon1f\n", {"f 3 f struct:A<b::c>"}},
    {"a line that ctags did not finish", "f\ta.c\t3;\"\tf\ng\ta.c\t4;", {"f 3 f"}},
    {"lines that are no tags", "\n\t\t\nname\nname\tfile\nname\tfile\t/x/;\"\tf\nn\tf\t1;\"\tlong\n", {}},
    {"nothing", "", {}},
};

TEST(CtagsOutput, Cases)
{
    for (const Case& row : kCases)
        EXPECT_EQ(Read(row.output), row.tags) << row.why;
}

TEST(CtagsOutput, EnumeratorsStandWhereTheyCanBeUsed)
{
    EXPECT_EQ(TagsOf("a.cpp", "enum Plain { kOne };\n"
                              "enum class Scoped { kTwo };\n"
                              "namespace n { enum Plain { kThree }; enum struct Scoped { kFour }; }\n"
                              "class C { enum Plain { kFive }; enum class Scoped : char { kSix }; };\n"
                              "union U { enum { kSeven }; };\n"
                              "enum { kEight };\n"),
              (Lines{"Plain 1 g", "kOne 1 e", "Scoped 2 g", "kTwo 2 e class:Scoped", "n 3 n", "Plain 3 g namespace:n",
                     "kThree 3 e namespace:n", "Scoped 3 g namespace:n", "kFour 3 e class:n::Scoped", "C 4 c",
                     "Plain 4 g class:C", "kFive 4 e class:C", "Scoped 4 g class:C", "kSix 4 e class:C::Scoped",
                     "U 5 u", "kSeven 5 e union:U", "kEight 6 e"}));
}

TEST(CtagsOutput, OfCHasItsStructs)
{
    EXPECT_EQ(TagsOf("a.c", "struct Outer { struct Inner { int deep; } inner; };\n"
                            "typedef struct { int lost; } Named;\n"
                            "int proto(int argument);\n"
                            "#define MACRO 1\n"),
              (Lines{"Outer 1 s", "Inner 1 s struct:Outer", "deep 1 m struct:Outer::Inner", "inner 1 m struct:Outer",
                     "lost 2 m", "Named 2 t", "proto 3 p", "MACRO 4 d"}));
}

TEST(CtagsOutput, OfHeadersHasPrototypesAndMembers)
{
    EXPECT_EQ(TagsOf("a.h", "namespace { int hidden(); }\n"
                            "namespace a::b { template <class T> struct S { void f() const; static int x; }; }\n"
                            "bool operator<(const S& a, const S& b);\n"),
              (Lines{"hidden 1 p", "a 2 n", "b 2 n namespace:a", "S 2 s namespace:a::b", "f 2 p struct:a::b::S",
                     "x 2 m struct:a::b::S", "operator < 3 p"}));
}

} // namespace
} // namespace cplustags
