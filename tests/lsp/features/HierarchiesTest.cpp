// Who calls whom, what derives from what, and the other of source and header.
#include "tests/lsp/features/FeatureFixture.h"

namespace {

using lsp_test::FeatureFixture;
using lsp_test::Json;

std::vector<std::string> Names(const Json& list, const char* member = nullptr)
{
    std::vector<std::string> names;
    for (const Json& each : list) {
        std::string name = member == nullptr ? each["name"] : each[member]["name"];
        if (member != nullptr)
            name += " " + std::to_string(each["fromRanges"].size());
        names.push_back(name);
    }
    return names;
}

using List = std::vector<std::string>;

TEST(CallHierarchy, LeadsToCallersAndToWhatIsCalled)
{
    const FeatureFixture fixture("== a.h\nint area(int n);\n== a.cpp\n#include \"a.h\"\nint area(int n) { return n; }\n"
                                 "== b.cpp\n#include \"a.h\"\nint twice() { return area(1) + area(2); }\n"
                                 "int all() { return ar|ea(3) + twice(); }\n");
    const Json items = fixture.Ask("textDocument/prepareCallHierarchy");
    ASSERT_EQ(Names(items), List{"area"});
    EXPECT_EQ(fixture.Places(items[0]["selectionRange"])[0].substr(5), ":1:4-1:8");
    const Json incoming = fixture.Handle("callHierarchy/incomingCalls", {{"item", items[0]}});
    EXPECT_EQ(Names(incoming, "from"), (List{"twice 2", "all 1"}));
    const Json outgoing = fixture.Handle("callHierarchy/outgoingCalls", {{"item", incoming[1]["from"]}});
    EXPECT_EQ(Names(outgoing, "to"), (List{"area 1", "twice 1"}));
}

TEST(CallHierarchy, HasCallsThatAreInNoFunction)
{
    const FeatureFixture fixture(
        "== a.cpp\nint are|a(int n);\n#define AREA area(1)\nint one = area(1);\nint all[] = {\n    area(1),\n"
        "    area(2),\n};\n== b.cpp\nstatic_assert(area(1) > 0);\n");
    const Json items = fixture.Ask("textDocument/prepareCallHierarchy");
    ASSERT_EQ(Names(items), List{"area"});
    EXPECT_EQ(Names(fixture.Handle("callHierarchy/incomingCalls", {{"item", items[0]}}), "from"),
              (List{"AREA 1", "one 1", "all 2", "b.cpp 1"}));
}

TEST(CallHierarchy, IsNullForWhatIsNotCalled)
{
    EXPECT_EQ(FeatureFixture("int n|;\n").Ask("textDocument/prepareCallHierarchy"), Json());
    EXPECT_EQ(FeatureFixture("// n|\n").Ask("textDocument/prepareTypeHierarchy"), Json());
}

TEST(TypeHierarchy, LeadsToBasesAndToDerivedClasses)
{
    const FeatureFixture fixture("struct Shape {};\nstruct Named {};\nstruct Circle : Shape, Named {};\n"
                                 "struct Ring : Circle {};\nCir|cle c;\n");
    const Json items = fixture.Ask("textDocument/prepareTypeHierarchy");
    ASSERT_EQ(Names(items), List{"Circle"});
    EXPECT_EQ(Names(fixture.Handle("typeHierarchy/supertypes", {{"item", items[0]}})), (List{"Shape", "Named"}));
    EXPECT_EQ(Names(fixture.Handle("typeHierarchy/subtypes", {{"item", items[0]}})), List{"Ring"});
}

Json OtherOf(const std::string& tree)
{
    const FeatureFixture fixture(tree);
    const Json other = fixture.Handle("textDocument/switchSourceHeader", {{"uri", fixture.UriOf(fixture.caretPath)}});
    if (!other.is_string())
        return other;
    return other.get<std::string>().substr(fixture.UriOf("").size());
}

TEST(SwitchSourceHeader, FindsTheOtherOne)
{
    EXPECT_EQ(OtherOf("== a.h\nint n;\n== a.cpp\nint n|;\n== x/a.h\nint n;\n"), "a.h") << "in the same directory";
    EXPECT_EQ(OtherOf("== a.cpp\nint n;\n== include/a.h\nint |n;\n"), "a.cpp") << "of the same name";
    EXPECT_EQ(OtherOf("== y/a.h\nint n;\n== x/include/a.h\nint n;\n== x/src/a.cpp\nint |n;\n"), "x/include/a.h")
        << "the nearest directory";
    EXPECT_EQ(OtherOf("== all.h\nint area();\n== a.cpp\nint area() { return| 1; }\n"), "all.h") << "by symbols";
    EXPECT_EQ(OtherOf("== b.h\nint m;\n== a.cpp\nint |n;\n"), Json());
}

} // namespace
