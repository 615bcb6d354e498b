#include "tagging/SourceParser.h"
#include "tagging/ctags/CtagsProgram.h"

#include "tests/support/Fifo.h"
#include "tests/support/StandInForCtags.h"
#include "tests/support/TempDirectory.h"
#include "tests/tagging/SymbolTexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <thread>

namespace tagging {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using Locals = TextParser::Locals;

class TextParserTest : public testing::Test {
protected:
    TextParserTest() : signalBefore(std::signal(SIGPIPE, SIG_IGN))
    {
        settings.ctags.program = *FindCtags(work.Path());
        settings.ctags.directory = work.Path();
        settings.ctags.temporaries = work.Path();
    }
    ~TextParserTest() override { std::signal(SIGPIPE, signalBefore); }

    void UseStandIn(const std::string& branches)
    {
        settings.ctags.program = work.Write("ctags", StandInForCtags(branches));
        std::filesystem::permissions(settings.ctags.program, std::filesystem::perms(0755));
    }

    std::vector<std::string> Symbols(const std::string& path, const std::string& text, Locals locals = Locals::No)
    {
        TextParser parser(settings);
        const auto parsed = parser.Parse(path, text, locals);
        return parsed ? TextsOf((*parsed)->symbols) : std::vector{parsed.Failure().Message()};
    }

    void (*const signalBefore)(int);
    const TempDirectory work;
    Settings settings;
};

TEST_F(TextParserTest, ReadsTheFieldsOfCplusplus)
{
    EXPECT_THAT(Symbols("a.cpp", R"(
namespace n {
template <class T, int N = 3> class Foo : public Base<T>, private n::Other {
public:
    explicit Foo(int a, char* b = 0);
    virtual ~Foo();
    static int count;
    enum class Color : int { Red };
    T value[3];
    static constexpr int kMany = 3;
};
}
using namespace a::b;
using std::vector;
namespace fs = std::filesystem;
static struct S* gone;
)"),
                ElementsAre("2-12 namespace n",
                            "3-11 class namespace:n::Foo <class T,int N=3> : Base<T>,n::Other [local]",
                            "5 prototype class:n::Foo::Foo (int a,char * b=0) [public declaration local]",
                            "6 prototype class:n::Foo::~Foo () [public declaration local virtual]",
                            "7 member class:n::Foo::count -> int [public declaration local static]",
                            "8 enum class:n::Foo::Color -> int [public local scoped]",
                            "8 enumerator enum:n::Foo::Color::Red [public local]",
                            "9 member class:n::Foo::value -> T[3] [public local]",
                            "10 member class:n::Foo::kMany -> int [public declaration local static]",
                            "13 using b = a::b [local]", "14 name vector = std::vector [local]",
                            "15 alias fs = std::filesystem [local]", "16 variable gone -> struct S * [local static]"));
}

TEST_F(TextParserTest, LeavesNoTraceOfTheFilesNameInUnnamedTypes)
{
    const char* const text = "typedef struct { int a; } T;\n";
    const std::vector<std::string> symbols = Symbols("a.c", text);
    EXPECT_THAT(symbols, ElementsAre("1 struct __anon000000000108 [local]",
                                     "1 member struct:__anon000000000108::a -> int [public local]",
                                     "1 typedef T -> struct __anon000000000108 [local]"));
    EXPECT_EQ(Symbols("b.c", text), symbols);
}

TEST_F(TextParserTest, FindsTheMacrosOfAllBranches)
{
    const char* const text = R"(extern "C" {
#if DEBUG
#  define LOG(level, ...) Log(level)
#else
#  define LOG(level, ...)
#  define QUIET 1 /* here */
#  define LONG(a, \
               b) a
#endif
}
)";
    EXPECT_THAT(Symbols("a.h", text), ElementsAre("3 macro LOG (level,...)", "5 macro LOG (level, ...) [extra]",
                                                  "6 macro QUIET [extra]", "7 macro LONG [extra]"));
    EXPECT_THAT(Symbols("a.c", "#define A\n"), ElementsAre("1 macro A [local]"));
}

struct Attribute {
    const char* text;
    const char* expected; // the declaration beside the macro's; "" when there is none
};

class TextParserAttributes : public TextParserTest, public testing::WithParamInterface<Attribute> {};

TEST_P(TextParserAttributes, HideNoDeclaration)
{
    std::string found;
    for (const std::string& symbol : Symbols("a.hpp", "class C {\n" + std::string(GetParam().text) + "\n};\n"))
        if (symbol.find("extra") != std::string::npos)
            found += symbol;
    EXPECT_EQ(found, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TextParserAttributes,
    testing::Values(
        Attribute{"HandleTable table_ GUARDED_BY(mutex_);", "2 member class:C::table_ -> HandleTable [private extra]"},
        Attribute{"std::map<int, int> map_ GUARDED_BY(mutex_);",
                  "2 member class:C::map_ -> std::map<int,int> [private extra]"},
        Attribute{"Writer* writer_ GUARDED_BY(mutex_);", "2 member class:C::writer_ -> Writer * [private extra]"},
        Attribute{"Set* const set_ GUARDED_BY(mutex_);", "2 member class:C::set_ -> Set * const [private extra]"},
        Attribute{"Stats stats_[kLevels] GUARDED_BY(mutex_);", "2 member class:C::stats_ -> Stats [private extra]"},
        Attribute{"unsigned long count GUARDED_BY(mutex_);",
                  "2 member class:C::count -> unsigned long [private extra]"},
        Attribute{"int unused G_GNUC_UNUSED;", "2 member class:C::unused -> int [private extra]"},
        Attribute{"unsigned int MAX(int);", ""}, Attribute{"EXPORT Foo MAX(int);", ""},
        Attribute{"const Foo MAX(int);", ""}, Attribute{"struct S MAX(int);", ""}, Attribute{"n::Foo MAX(int);", ""},
        Attribute{"void f(int) LOCKS(mutex_);", ""}, Attribute{"FOO(bar)", ""}));

TEST_F(TextParserTest, FindsWhatCtagsOverlooksInCplusplus)
{
    EXPECT_THAT(Symbols("a.cpp", "namespace n {\n"
                                 "struct A : B {\n"
                                 "    ~A() override;\n"
                                 "    Value value = Value{1};\n"
                                 "};\n"
                                 "template <class T, class U>\n"
                                 "T Cast(U u) { return T(u); }\n"
                                 "enum E SIZE(char) { kOne };\n"
                                 "}\n"),
                IsSupersetOf({"3 prototype struct:n::A::~A () [public declaration local extra]",
                              "4 member struct:n::A::value -> Value [public local extra]",
                              "7 function namespace:n::Cast (U u) -> T <class T,class U> [extra]",
                              "8 enumerator enum:n::E::kOne [public local extra]"}));
}

TEST_F(TextParserTest, FindsLocalsOnRequest)
{
    const char* const text = "int f(int a)\n{\n    int b = a;\n    return b;\n}\n";
    EXPECT_THAT(Symbols("a.c", text), ElementsAre("1-5 function f (int a) -> int"));
    EXPECT_THAT(Symbols("a.c", text, Locals::Yes),
                ElementsAre("1-5 function f (int a) -> int", "1 parameter function:f::a -> int [local]",
                            "3 local function:f::b -> int [local]"));
}

TEST_F(TextParserTest, ServesThreadsThatEnd)
{
    TextParser parser(settings);
    for (int i = 0; i < 3; ++i)
        std::thread([&] {
            const auto parsed = parser.Parse("a.c", "int i;", Locals::No);
            ASSERT_TRUE(parsed) << parsed.Failure().Message();
            EXPECT_THAT(TextsOf((*parsed)->symbols), ElementsAre("1 variable i -> int"));
        }).join();
}

TEST_F(TextParserTest, ReportsATextThatCrashesCtagsAndServesTheNext)
{
    UseStandIn("*) test -e " + work / "well" + " || kill -SEGV $$;;\n");
    TextParser parser(settings);
    const auto crashed = parser.Parse("a.c", "int i;", Locals::No);
    ASSERT_FALSE(crashed);
    EXPECT_EQ(crashed.Failure().Message(), "cannot parse a.c: ctags crashed");
    work.Write("well", "");
    EXPECT_TRUE(parser.Parse("a.c", "int i;", Locals::No));
}

TEST_F(TextParserTest, ReportsATextThatHangsCtagsAndServesTheNext)
{
    UseStandIn("*) test -e " + work / "well" + " || sleep 1000;;\n");
    settings.ctags.timeLimit = 0;
    TextParser hurried(settings);
    const auto hung = hurried.Parse("a.c", "int i;", Locals::No);
    ASSERT_FALSE(hung);
    EXPECT_EQ(hung.Failure().Message(), "cannot parse a.c: ctags took longer than 0 s");
    settings.ctags.timeLimit = 20;
    work.Write("well", "");
    EXPECT_TRUE(TextParser(settings).Parse("a.c", "int i;", Locals::No));
}

TEST_F(TextParserTest, LeavesATextThatHangsCtagsAloneUntilItChangesMuch)
{
    UseStandIn("*) sleep 1000;;\n");
    settings.ctags.timeLimit = 0;
    TextParser parser(settings);
    const auto problemOf = [&](const char* path, const std::string& text) {
        const auto parsed = parser.Parse(path, text, Locals::No);
        return parsed ? "" : parsed.Failure().Message();
    };
    const std::string text = "int i;\nvoid f(void)\n{\n}\n";
    EXPECT_EQ(problemOf("a.c", text), "cannot parse a.c: ctags took longer than 0 s");
    for (const char* typed : {"", "g", "g(", "g();"})
        EXPECT_EQ(problemOf("a.c", text + typed), "cannot parse a.c: ctags took too long for a text like it") << typed;
    EXPECT_EQ(problemOf("a.c", "int i;\n"), "cannot parse a.c: ctags took longer than 0 s");
    EXPECT_EQ(problemOf("b.c", "int i;\n"), "cannot parse b.c: ctags took longer than 0 s");
}

TEST_F(TextParserTest, StopsWhileCtagsHangs)
{
    const Fifo asked;
    UseStandIn("*) echo asked >" + asked.Path() + "; sleep 1000;;\n");
    settings.ctags.timeLimit = 1000;
    TextParser parser(settings);
    std::string problem;
    std::thread waits([&] { problem = parser.Parse("a.c", "int i;", Locals::No).Failure().Message(); });
    EXPECT_EQ(asked.ReadLine(::getpid()), "asked");
    parser.Stop();
    waits.join();
    EXPECT_EQ(problem, "cannot parse a.c: cancelled");
    EXPECT_FALSE(parser.Parse("a.c", "int i;", Locals::No));
}

TEST_F(TextParserTest, ReportsACtagsThatDoesNotStart)
{
    settings.ctags.program = work / "absent";
    const auto parsed = TextParser(settings).Parse("a.c", "int i;", Locals::No);
    ASSERT_FALSE(parsed);
    EXPECT_THAT(parsed.Failure().Message(), HasSubstr(work / "absent"));
}

TEST_F(TextParserTest, ReadsDamagedTexts)
{
    const std::string text = "namespace n { class A { int a; void f() { if (x) { \"text\\\n /* } \"; } }; } ";
    TextParser parser(settings);
    for (size_t length = 0; length <= text.size(); ++length)
        EXPECT_TRUE(parser.Parse("a.cpp", text.substr(0, length), Locals::Yes)) << length;
    EXPECT_TRUE(parser.Parse("a.cpp", std::string("int a;\0\n\xff\xfe int b;", 18), Locals::Yes));
}

TEST_F(TextParserTest, FindsIncludesAndNames)
{
    TextParser parser(settings);
    const auto parsed = parser.Parse("a.c",
                                     "#include <sys/stat.h>\n#include \"b.h\"\n"
                                     "// comment\n"
                                     "#define TWICE(x) (x + x)\n"
                                     "const char* text = \"string\";\n",
                                     Locals::No);
    ASSERT_TRUE(parsed);
    EXPECT_THAT(SortedNames(**parsed), ElementsAre("TWICE", "text", "x"));
    ASSERT_EQ((*parsed)->includes.size(), 2u);
    EXPECT_EQ((*parsed)->includes[0].name, "sys/stat.h");
    EXPECT_TRUE((*parsed)->includes[0].isAngled);
    EXPECT_EQ((*parsed)->includes[1].name, "b.h");
    EXPECT_EQ((*parsed)->includes[1].line, 2u);
}

} // namespace
} // namespace tagging
