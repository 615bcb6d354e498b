// Symbols of all projects by a few letters of their names.
#include "tests/lsp/features/FeatureFixture.h"

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;

const char* const kTree = "== shape.h\nstruct Shape { int Area(); };\nint find_shape(void);\n"
                          "== sub/shape.cpp\n#include \"shape.h\"\nint Shape::Area() { return 1; }\n"
                          "int find_shape(void) { return 2; }\n";

// "shape.h:1 sub/shape.cpp:2"
std::string Found(const FeatureFixture& fixture, const std::string& query)
{
    std::string found;
    for (const Json& item : fixture.Handle("workspace/symbol", {{"query", query}})) {
        const std::string uri = item["location"]["uri"];
        found += (found.empty() ? "" : " ") + item["name"].get<std::string>() + "@" + uri.substr(uri.rfind('/') + 1) +
                 ":" + std::to_string(item["location"]["range"]["start"]["line"].get<int>());
    }
    return found;
}

} // namespace

TEST(WorkspaceSymbols, Cases)
{
    const FeatureFixture fixture(kTree);
    const struct {
        const char* why;
        const char* query;
        const char* found;
    } kCases[] = {
        {"nothing asked", "", ""},
        {"a definition stands before its declaration", "find_shape", "find_shape@shape.cpp:2 find_shape@shape.h:1"},
        {"letters in between", "fshp", "find_shape@shape.cpp:2 find_shape@shape.h:1"},
        {"narrowed by the scope", "Shape::Ar", "Area@shape.cpp:1 Area@shape.h:0"},
        {"narrowed by the path", "sub/fi", "find_shape@shape.cpp:2"},
        {"a capital counts", "FIND", ""},
        {"nothing fits", "zzz", ""},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Found(fixture, each.query), each.found) << each.why;
}

TEST(WorkspaceSymbols, HaveTheirRangeLaterWhereTheClientAsksForIt)
{
    FeatureOptions options;
    options.capabilities["workspace"]["symbol"]["resolveSupport"]["properties"] = {"location.range"};
    const FeatureFixture fixture(kTree, options);
    const Json found = fixture.Handle("workspace/symbol", {{"query", "find_shape"}});
    ASSERT_EQ(found.size(), 2u);
    EXPECT_FALSE(found[0]["location"].contains("range"));
    const Json resolved = fixture.Handle("workspaceSymbol/resolve", found[0]);
    EXPECT_EQ(resolved["location"]["range"],
              (Json{{"start", {{"line", 2}, {"character", 4}}}, {"end", {{"line", 2}, {"character", 14}}}}));
}

TEST(WorkspaceSymbols, CountTheOpenText)
{
    FeatureFixture fixture("== a.c\nint ol|d_name;\n");
    fixture.Open("a.c", "\nint new_name;\n");
    EXPECT_EQ(Found(fixture, "new_name"), "new_name@a.c:1");
    EXPECT_EQ(Found(fixture, "old_name"), "");
}

// Whatever the system's headers have that fits better.
TEST(WorkspaceSymbols, AreOfTheSystemOnlyWhenNothingElseFits)
{
    FeatureOptions options;
    options.isIndexed = false;
    options.withSystem = true;
    const FeatureFixture fixture("== a.c\n#include <errno.h>\nint my_errno;\nint first = |EDOM;\n", options);
    EXPECT_EQ(fixture.Ask("textDocument/definition").size(), 1U);
    EXPECT_EQ(Found(fixture, "errno"), "my_errno@a.c:1");
    const Json found = fixture.Handle("workspace/symbol", {{"query", "EDOM"}});
    ASSERT_FALSE(found.empty());
    EXPECT_EQ(found[0]["name"], "EDOM");
    EXPECT_EQ(found[0]["location"]["uri"].get<std::string>().substr(0, 20), "file:///usr/include/");
}
