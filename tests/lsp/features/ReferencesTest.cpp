// Where a name is mentioned, and how.
#include "tests/lsp/features/FeatureFixture.h"

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;

using Places = std::vector<std::string>;

Json WithDeclarations(bool include)
{
    return {{"context", {{"includeDeclaration", include}}}};
}

Places ReferencesIn(const FeatureFixture& fixture, bool withDeclarations)
{
    return fixture.Places(fixture.Ask("textDocument/references", WithDeclarations(withDeclarations)));
}

TEST(References, OfAFunctionInAllFilesTheTextItselfFirst)
{
    const FeatureFixture fixture("== a.h\nint area(int n);\n== b.cpp\n#include \"a.h\"\nint area(int n) { return n; }\n"
                                 "== c.cpp\n#include \"a.h\"\n// area\n#define AREA area(1)\nint x = ar|ea(2);\n");
    EXPECT_EQ(ReferencesIn(fixture, true),
              (Places{"c.cpp:2:13-2:17", "c.cpp:3:8-3:12", "a.h:0:4-0:8", "b.cpp:1:4-1:8"}));
    EXPECT_EQ(ReferencesIn(fixture, false), (Places{"c.cpp:2:13-2:17", "c.cpp:3:8-3:12"}));
}

TEST(References, OfALocalInItsScope)
{
    const FeatureFixture fixture("int n;\nvoid f(int «n») {\n  g(«n|»);\n  { int n; h(n); }\n}\nint m = n;\n");
    EXPECT_EQ(ReferencesIn(fixture, true), fixture.Marks());
    EXPECT_EQ(ReferencesIn(fixture, false), Places{fixture.Marks()[1]});
}

TEST(References, CountInUnitsOfTheClientWhateverEndsTheLines)
{
    const FeatureFixture fixture("int «n»;\r\nconst char* a = \"\U0001F600\"; int b = «n»;\rint c = «n|»;\n");
    EXPECT_EQ(ReferencesIn(fixture, true), fixture.Marks());
}

// In a file; the text of a client is UTF-8.
TEST(References, CountAByteThatIsNotUtf8AsOneUnit)
{
    const std::string text = "== a.c\nint far|;\n== b.c\n/* \xe4\xf6\xff */ int near = far;\n";
    for (const char* encoding : {"utf-8", "utf-16"}) {
        FeatureOptions options;
        options.capabilities["general"]["positionEncodings"] = {encoding};
        const FeatureFixture fixture(text, options);
        EXPECT_EQ(ReferencesIn(fixture, false), Places{"b.c:0:21-0:24"}) << encoding;
    }
}

TEST(References, CountInUnitsOfTheClientWithSeveralOnALine)
{
    const std::string text =
        "int «n»; const char* a = \"\U0001F600\"; int b = «n», c = «n|»;\n  int d = «n», e = «n»;\n";
    for (const char* encoding : {"utf-8", "utf-16"}) {
        FeatureOptions options;
        options.capabilities["general"]["positionEncodings"] = {encoding};
        const FeatureFixture fixture(text, options);
        EXPECT_EQ(ReferencesIn(fixture, true), fixture.Marks()) << encoding;
    }
}

TEST(References, ComeInPartsWhenThereAreMany)
{
    std::string text = "int n|;\n";
    for (int i = 0; i < 1500; ++i)
        text += "int a" + std::to_string(i) + " = n;\n";
    FeatureFixture fixture(text);
    EXPECT_EQ(ReferencesIn(fixture, true).size(), 1501U);
    std::vector<size_t> parts;
    fixture.sendPart = [&](const Json& part) { parts.push_back(part.size()); };
    EXPECT_TRUE(ReferencesIn(fixture, true).empty());
    EXPECT_EQ(parts, (std::vector<size_t>{1000, 501}));
}

TEST(References, ComeWholeWhenTheyAreFewerThanAPart)
{
    std::string text = "int n|;\nint a[] = {";
    for (int i = 0; i < 998; ++i)
        text += "n, ";
    FeatureFixture fixture(text + "};\n");
    fixture.sendPart = [&](const Json&) { ADD_FAILURE() << "a part"; };
    EXPECT_EQ(ReferencesIn(fixture, true).size(), 999U);
}

std::string Repeated(size_t count, const std::string& line)
{
    std::string text;
    for (size_t i = 0; i < count; ++i)
        text += line;
    return text;
}

TEST(References, AreTenThousandAtMost)
{
    const FeatureFixture fixture("int n|;\nint a[] = {" + Repeated(10'500, "n, ") + "};\n");
    EXPECT_EQ(ReferencesIn(fixture, true).size(), 10'000U);
}

TEST(References, AreNotFewerForTheDeclarationsLeftOut)
{
    const FeatureFixture fixture("== a.c\nint n|;\n" + Repeated(2'000, "extern int n;\n") + "== b.c\nint a[] = {" +
                                 Repeated(9'500, "n, ") + "};\n");
    EXPECT_EQ(ReferencesIn(fixture, false).size(), 9'500U);
}

TEST(References, AreAllListedUpToTenThousand)
{
    std::string text = "int n|;\n";
    for (int i = 0; i < 9'999; ++i)
        text += "int a = n;\n";
    const FeatureFixture fixture(text);
    EXPECT_EQ(ReferencesIn(fixture, true).size(), 10'000U);
}

TEST(References, OfNoNameThereAreNone)
{
    const FeatureFixture fixture("int n; // n|\n");
    EXPECT_EQ(ReferencesIn(fixture, true), Places{});
    EXPECT_EQ(fixture.Refusal("textDocument/references"), "-32602 'context' is missing");
}

std::string Kinds(const std::string& text)
{
    const FeatureFixture fixture(text);
    std::string kinds;
    for (const Json& each : fixture.Ask("textDocument/documentHighlight"))
        kinds += "?TRW"[each["kind"].get<size_t>()];
    return kinds;
}

TEST(Highlights, TellWritesFromReads)
{
    const struct {
        const char* why;
        const char* text;
        const char* kinds;
    } cases[] = {
        {"an assignment", "int n;\nvoid f() { n| = 1; }\n", "RW"},
        {"a comparison", "int n;\nvoid f() { n| == 1; }\n", "RR"},
        {"compound assignments", "int n;\nvoid f() { n| += 1; n <<= 2; n <= 3; n != 4; }\n", "RWWRR"},
        {"counting", "int n;\nvoid f() { n|++; --n; -n; }\n", "RWWR"},
        {"an address that is passed", "int n;\nvoid f() { g(&n|); g(1, &n); x = &n; g(a & n); }\n", "RWWRR"},
        {"a declaration with an initialiser", "void f() { int n = 1; g(n|); }\n", "WR"},
        {"a member", "struct A { int n; };\nvoid f(A a) { a.n| = a.n; }\n", "RWR"},
        {"a macro's body", "int n;\n#define N n|\nint m = n;\n", "RTR"},
        {"a function", "void f() {}\nvoid g() { f|(); }\n", "RR"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Kinds(c.text), c.kinds) << c.why;
}

TEST(Highlights, StayInTheText)
{
    const FeatureFixture fixture("== a.h\nextern int n;\n== b.cpp\n#include \"a.h\"\nint «n»;\nint m = «n|»;\n");
    EXPECT_EQ(fixture.Places(fixture.Ask("textDocument/documentHighlight")), fixture.Marks());
}

} // namespace
