#include "tagging/ctags/CtagsOutput.h"

#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <random>

namespace tagging {
namespace {

using Lines = std::vector<std::string>;

std::string Shown(const tagsfile::Tag& tag)
{
    std::string shown = std::string(tag.name) + " " + std::to_string(tag.line) + " " + tag.kind;
    if (!tag.scope.empty())
        shown += " " + std::string(tag.scope);
    return shown;
}

Lines Read(const std::string& output)
{
    Lines lines;
    for (const tagsfile::Tag& tag : ReadCtagsOutput(output).tags)
        lines.push_back(Shown(tag));
    return lines;
}

// The tags that the real ctags finds in a source.
Lines TagsOf(const std::string& name, const std::string& source)
{
    const TempDirectory directory;
    std::vector<std::string> command = {"/usr/bin/env", "ctags-universal"};
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

// ctags' name for an unnamed declaration: its file, its number and its kind.
#define ANONYMOUS "__anon87674d200108"

const Case kCases[] = {
    {"no scope", "f\ta.c\t3;\"\tf\n", {"f 3 f"}},
    {"a scope that lookups know", "f\ta.c\t3;\"\tf\tclass:A::B\n", {"f 3 f class:A::B"}},
    {"one that they do not know", "l\ta.c\t3;\"\ts\tfunction:main\n", {"l 3 s"}},
    {"a kind that is no letter", "f\ta.c\t3;\"\t\r\ng\ta.c\t4;\"\tf\n", {"g 4 f"}},
    {"a scope that was cut off", "f\ta.c\t3;\"\tf\tclass", {"f 3 f"}},
    {"one that was cut off in front of its name", "f\ta.c\t3;\"\tf\tclass:", {"f 3 f"}},
    {"properties are not for them", "f\ta.c\t3;\"\tf\tclass:A\tproperties:const,inline\n", {"f 3 f class:A"}},
    {"properties alone", "f\ta.c\t3;\"\tf\tproperties:static\n", {"f 3 f"}},
    {"other fields of some languages", "f\ta.py\t3;\"\tf\tclass:A\tnameref:unknown:B\n", {"f 3 f class:A"}},
    {"other fields and no scope", "f\ta.go\t3;\"\tf\tpackage:A\tclass\n", {"f 3 f"}},
    {"anonymous parts of a scope", "m\ta.c\t3;\"\tm\tstruct:A::" ANONYMOUS "::B\n", {"m 3 m struct:A::B"}},
    {"anonymous parts in a row", "m\ta.c\t3;\"\tm\tunion:" ANONYMOUS "::" ANONYMOUS "::B\n", {"m 3 m union:B"}},
    {"an anonymous namespace", "f\ta.c\t3;\"\tf\tnamespace:" ANONYMOUS "\n", {"f 3 f"}},
    {"an anonymous struct has no name to look up", ANONYMOUS "\ta.c\t3;\"\ts\n", {}},
    {"a name that only begins like it", "__anonymous\ta.c\t3;\"\ts\n", {"__anonymous 3 s"}},
    {"a word of hexadecimal digits",
     "__anonface\ta.c\t3;\"\ts\tstruct:__anoncafe\n",
     {"__anonface 3 s struct:__anoncafe"}},
    {"separators in template arguments", "f\ta.c\t3;\"\tf\tstruct:A<b::c>::" ANONYMOUS "\n", {"f 3 f struct:A<b::c>"}},
    {"an enumerator of an anonymous enumeration", "e\ta.c\t3;\"\te\tenum:A::" ANONYMOUS "\n", {"e 3 e class:A"}},
    {"in a namespace", "e\ta.c\t3;\"\te\tenum:A::" ANONYMOUS "\nA\ta.c\t2;\"\tn\n", {"e 3 e namespace:A", "A 2 n"}},
    {"in an anonymous part of one",
     "A\ta.c\t2;\"\tn\ne\ta.c\t3;\"\te\tenum:A::" ANONYMOUS "::E\n",
     {"A 2 n", "e 3 e namespace:A"}},
    {"in a class of an anonymous part",
     "A\ta.c\t2;\"\ts\tnamespace:" ANONYMOUS "\ne\ta.c\t3;\"\te\tenum:" ANONYMOUS "::A::E\n",
     {"A 2 s", "e 3 e struct:A"}},
    {"in a function, where it is nobody's",
     "f\ta.c\t2;\"\tf\tclass:A\ne\ta.c\t3;\"\te\tenum:A::f::E\n",
     {"f 2 f class:A", "e 3 e"}},
    {"in a struct with a function's name",
     "A\ta.c\t1;\"\tf\nA\ta.c\t2;\"\ts\ne\ta.c\t3;\"\te\tenum:A::E\n",
     {"A 1 f", "A 2 s", "e 3 e struct:A"}},
    {"an enumerator at top level", "e\ta.c\t3;\"\te\tenum:E\n", {"e 3 e"}},
    {"escapes are ctags' alone", "a\\\\b\ta.php\t3;\"\tn\tclass:A\\\\B\n", {"a\\b 3 n class:A\\B"}},
    {"control characters", "a\\x01b\\a\ta.md\t3;\"\tc\n", {"a\x01\x62\a 3 c"}},
    {"an unfinished escape", "a\\\ta.md\t3;\"\tc\nb\\x4\ta.md\t3;\"\tc\n", {"a\\ 3 c", "bx4 3 c"}},
    {"a name that would end in the middle", "a\\tb\ta.md\t3;\"\tc\na\\nb\ta.md\t3;\"\tc\n", {}},
    {"a name that would make it a pseudo-tag", "\\x21 a\ta.md\t3;\"\tc\n!b\ta.md\t3;\"\tc\n", {}},
    {"a scope that would end in the middle", "a\ta.md\t3;\"\tc\tclass:A\\tB\n", {"a 3 c"}},
    {"a line that ctags did not finish", "f\ta.c\t3;\"\tf\ng\ta.c\t4;", {"f 3 f"}},
    {"lines that are no tags", "\n\t\t\nname\nname\tfile\nname\tfile\t/x/;\"\tf\nn\tf\t1;\"\tlong\n", {}},
    {"a line number that is none", "a\tf\t-1;\"\tf\nb\tf\t99999999999;\"\tf\nc\tf\t1x;\"\tf\n", {}},
    {"nothing", "", {}},
};

TEST(CtagsOutput, Cases)
{
    for (const Case& row : kCases)
        EXPECT_EQ(Read(row.output), row.tags) << row.why;
}

TEST(CtagsOutput, EnumeratorsGetTheScopeWhereTheyAreVisible)
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

TEST(CtagsOutput, LocalSymbolsDoNotGetTheirFunctionAsScope)
{
    EXPECT_EQ(
        TagsOf("a.cpp", "void f() { struct Local { int m; enum { kOne }; }; enum { kTwo }; }\n"
                        "void C::g() { enum E { kThree }; enum class S { kFour }; }\n"
                        "auto h = [] { enum { kFive }; };\n"),
        (Lines{"f 1 f", "Local 1 s", "m 1 m struct:f::Local", "kOne 1 e struct:f::Local", "kTwo 1 e", "g 2 f class:C",
               "E 2 g", "kThree 2 e", "S 2 g", "kFour 2 e class:C::g::S", "kFive 3 e", "h 3 v"}));
}

TEST(CtagsOutput, UnnamedNamespacesAreLeftOutOfScopes)
{
    EXPECT_EQ(TagsOf("a.cpp", "namespace n { namespace { struct S { enum { kOne }; int m; }; enum { kTwo };\n"
                              "enum class Scoped { kThree }; } }\n"),
              (Lines{"n 1 n", "S 1 s namespace:n", "kOne 1 e struct:n::S", "m 1 m struct:n::S", "kTwo 1 e namespace:n",
                     "Scoped 2 g namespace:n", "kThree 2 e class:n::Scoped"}));
}

TEST(CtagsOutput, OtherLanguagesKeepTheirNamesUnchanged)
{
    EXPECT_EQ(TagsOf("a.php", "<?php\nnamespace A\\B;\nclass C { function f() {} }\n"),
              (Lines{"A\\B 2 n", "C 3 c namespace:A\\B", "f 3 f class:A\\B\\C"}));
    EXPECT_EQ(TagsOf("a.md", "# one\ttwo\n# !three\n# four\n"), Lines{"four 3 c"});
}

TEST(CtagsOutput, CKeepsNestedStructs)
{
    EXPECT_EQ(TagsOf("a.c", "struct Outer { struct Inner { int deep; } inner; };\n"
                            "typedef struct { int lost; } Named;\n"
                            "int proto(int argument);\n"
                            "#define MACRO 1\n"),
              (Lines{"Outer 1 s", "Inner 1 s struct:Outer", "deep 1 m struct:Outer::Inner", "inner 1 m struct:Outer",
                     "lost 2 m", "Named 2 t", "proto 3 p", "MACRO 4 d"}));
}

TEST(CtagsOutput, HeadersGetPrototypesAndMembers)
{
    EXPECT_EQ(TagsOf("a.h", "namespace { int hidden(); }\n"
                            "namespace a::b { template <class T> struct S { void f() const; static int x; }; }\n"
                            "bool operator<(const S& a, const S& b);\n"),
              (Lines{"hidden 1 p", "a 2 n", "b 2 n namespace:a", "S 2 s namespace:a::b", "f 2 p struct:a::b::S",
                     "x 2 m struct:a::b::S", "operator < 3 p"}));
}

// Whatever a dying ctags, or another program, may write.
TEST(CtagsOutput, DamageAnywhereIsHarmless)
{
    std::string all;
    for (const Case& row : kCases)
        all += row.output;
    std::mt19937 random(7);
    for (int round = 0; round < 2000; ++round) {
        std::string damaged = all;
        for (size_t changes = 1 + random() % 20; changes > 0; --changes)
            damaged[random() % damaged.length()] = "\t\n\\:;\"x<>!\0_"[random() % 12];
        damaged.resize(random() % damaged.length());
        for (const tagsfile::Tag& tag : ReadCtagsOutput(damaged).tags) {
            ASSERT_FALSE(tag.name.empty()) << damaged;
            for (const std::string_view text : {tag.name, tag.scope})
                ASSERT_EQ(text.find_first_of("\t\n\r"), std::string_view::npos) << damaged;
        }
    }
}

TEST(CtagsOutput, ScopesOfAnyLengthAndDepthAreRead)
{
    std::string scope = "A";
    for (int depth = 0; depth < 100000; ++depth)
        scope += "::" ANONYMOUS;
    EXPECT_EQ(Read("a\tf\t1;\"\tm\tstruct:" + scope + "\nb\tf\t2;\"\te\tenum:" + scope + "\n"),
              (Lines{"a 1 m", "b 2 e"}));
}

} // namespace
} // namespace tagging
