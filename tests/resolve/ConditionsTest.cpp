#include "resolve/Conditions.h"

#include "tests/resolve/Project.h"

#include <gtest/gtest.h>

namespace resolve {
namespace {

struct Case {
    const char* why;
    const char* text; // lines that begin with "+" are taken, with "?" unsure, with "-" left
    bool isCplusplus = false;
};

constexpr Case kCases[] = {
    {"without a condition", "+\n+\n"},
    {"a header's guard", "#ifndef A_H\n+#define A_H\n+\n#endif\n+\n"},
    {"zero and one", "#if 0\n-\n#else\n+\n#endif\n#if 1\n+\n#else\n-\n#endif\n"},
    {"a default of its own", "#ifndef LEVEL\n#define LEVEL 0\n#endif\n#if (LEVEL>=1)\n-\n#else\n+\n#endif\n"},
    {"an option", "#ifdef FAST\n-\n#else\n+\n#endif\n#ifdef HAVE_IT\n?\n#else\n?\n#endif\n"},
    {"an option that takes something away", "#if defined(JSON_NO_INT64)\n-\n#else\n+\n#endif\n"},
    {"another system", "#ifdef _WIN32\n-\n#elif defined(__linux__)\n+\n#else\n-\n#endif\n"},
    {"another compiler", "#if defined(_MSC_VER) && _MSC_VER > 1200\n-\n#endif\n#if defined(__GNUC__)\n+\n#endif\n"},
    {"the C of today", "#if defined (__STDC_VERSION__) && (__STDC_VERSION__ >= 199901L)\n+\n#else\n-\n#endif\n"},
    {"C++", "#ifdef __cplusplus\n+\n#else\n-\n#endif\n", true},
    {"not C++", "#ifdef __cplusplus\n-\n#else\n+\n#endif\n"},
    {"a value that another file knows", "#if OTHER > 2\n?\n#else\n?\n#endif\n#ifdef OTHER\n?\n#endif\n"},
    {"inside of a branch that is left", "#if 0\n#if 1\n-\n#else\n-\n#endif\n#endif\n+\n"},
    {"inside of an unsure branch", "#if HAVE_IT\n#if 1\n?\n#else\n-\n#endif\n#else\n?\n#endif\n"},
    {"behind a sure branch", "#if HAVE_IT\n?\n#elif 1\n?\n#elif FASTER\n-\n#else\n-\n#endif\n"},
    {"defined in an unsure branch", "#ifdef HAVE_IT\n#define A 1\n#endif\n#ifdef A\n?\n#else\n?\n#endif\n"},
    {"defined in a branch that is left", "#if 0\n#define A 1\n#endif\n#ifdef A\n-\n#else\n+\n#endif\n"},
    {"undefined again", "#define A\n#ifdef A\n+\n#endif\n#undef A\n#ifdef A\n-\n#endif\n"},
    {"unknown and false is false",
     "#if HAVE_IT && 0\n-\n#endif\n#if HAVE_IT || 1\n+\n#endif\n#if HAVE_IT && 1\n?\n#endif\n"},
    {"a macro with arguments", "#if __GNUC_PREREQ(4, 3) && HAVE_IT\n?\n#endif\n#if __has_include(<a.h>)\n?\n#endif\n"},
    {"numbers", "#if 0x10 == 16 && 010 == 8 && 1 + 2 * 3 == 7 && -1 < 0 && !(1 << 4 != 16) && 5 % 2\n+\n#endif\n"},
    {"a choice", "#if 1 ? 0 : 1\n-\n#endif\n"},
    {"in a comment", "/*\n#if 0\n*/\n+\n"},
    {"not closed", "#if 0\n-\n"},
    {"closed too often", "#endif\n#else\n#elif 1\n+\n"},
    {"damaged", "#if\n?\n#endif\n#if (((1\n#endif\n#if 1 +\n?\n#endif\n#ifdef\n?\n#endif\n#if /\n?\n#endif\n"},
    {"a default that another file may replace",
     "#ifndef OTHER\n#define OTHER 0\n#endif\n#if OTHER\n-\n#else\n+\n#endif\n"},
    {"a guard that another file copies", "// text\n#ifndef OTHER\n#define OTHER\n+\n#endif\n"},
    {"a part of a file that another file has, too", "int i;\n#ifndef OTHER\n#define OTHER\n?\n#endif\n+\n"},
    {"a feature of another compiler",
     "#ifndef __has_feature\n#define __has_feature(x) 0\n#endif\n#if __has_feature(arc)\n-\n#else\n+\n#endif\n"},
    {"defined by itself", "#define A A\n#if A\n?\n#endif\n"},
};

char SignOf(Branch branch)
{
    return branch == Branch::Taken ? '+' : branch == Branch::Unsure ? '?' : '-';
}

TEST(ConditionsTest, SaysWhichBranchesAreTaken)
{
    for (const Case& each : kCases) {
        std::string text;
        std::vector<std::pair<unsigned, char>> expected;
        unsigned line = 1;
        for (const char* at = each.text; *at != '\0'; ++at) {
            const bool begins = at == each.text || at[-1] == '\n';
            if (begins && (*at == '+' || *at == '?' || *at == '-'))
                expected.emplace_back(line, *at);
            else
                text += *at;
            line += *at == '\n' ? 1 : 0;
        }
        const Conditions conditions(Tokens(text), each.isCplusplus,
                                    [](std::string_view name) { return name == "OTHER"; });
        for (const auto& [where, sign] : expected)
            EXPECT_EQ(SignOf(conditions.At(where)), sign) << each.why << ", line " << where;
    }
}

TEST(ConditionsTest, EndOfDeepExpressionsIsReached)
{
    std::string text = "#if ";
    for (int i = 0; i < 100'000; ++i)
        text += i % 2 == 0 ? "(" : "!";
    const Conditions conditions(Tokens(text + "\n"), false, [](std::string_view) { return false; });
    EXPECT_EQ(conditions.At(2), Branch::Unsure);
}

TEST(ConditionsTest, EndOfMacrosThatMultiplyIsReached)
{
    std::string text;
    for (int i = 0; i < 18; ++i) {
        text += "#define A" + std::to_string(i) + " 0";
        for (int part = 0; part < 20; ++part)
            text += "+A" + std::to_string(i + 1);
        text += "\n";
    }
    text += "#if A0\n";
    const Conditions conditions(Tokens(text), false, [](std::string_view) { return false; });
    EXPECT_EQ(conditions.At(20), Branch::Unsure);
}

TEST(ConditionsTest, DecideBetweenDeclarations)
{
    ExpectDefinitions({
        {"the first of alternatives", "#ifdef HAVE_IT\n#define $N 1\n#else\n#define N 2\n#endif\nint y = N|;\n"},
        {"the one of this system", "== a.h\n#ifdef _WIN32\n#define N 1\n#else\n#define $N 2\n#endif\n"
                                   "== a.c\n#include \"a.h\"\nint y = N|;\n"},
        {"functions", "== mem.h\n#ifndef ACCESS\n#  if defined(__GNUC__)\n#    define ACCESS 1\n#  endif\n#endif\n"
                      "#if defined(ACCESS) && (ACCESS==2)\nstatic int read32(void) { return 2; }\n"
                      "#elif defined(ACCESS) && (ACCESS==1)\nstatic int $read32(void) { return 1; }\n"
                      "#else\nstatic int read32(void) { return 0; }\n#endif\n"
                      "== a.c\n#include \"mem.h\"\nint y(void) { return read|32(); }\n"},
        {"the project's macro before the system's",
         "== /usr/include/assert.h\n#define check(x) 1\n== debug.h\n#include <assert.h>\n#ifndef check\n"
         "#define $check(x) 0\n#endif\n== a.c\n#include \"debug.h\"\nint y = check|(1);\n"},
        {"a macro before the function that it replaces",
         "== api.h\nint is_error(int);\n== inner.h\n#include \"api.h\"\n#undef is_error\n#define $is_error other\n"
         "== a.c\n#include \"api.h\"\n#include \"inner.h\"\nint y(void) { return is_|error(1); }\n"},
        {"types", "typedef int before;\n#if defined(JSON_NO_INT64)\ntypedef int Large;\n#else\ntypedef long $Large;\n"
                  "#endif\nLar|ge x;\n"},
        {"in a branch that is left, its neighbours",
         "int f(void);\n#ifdef _WIN32\nint $f(void);\nint y(void) { return f|(); }\n#endif\n"},
    });
}

} // namespace
} // namespace resolve
