// Where what a name means is declared, defined, implemented.
#include "tests/lsp/features/FeatureFixture.h"

namespace {

using lsp_test::FeatureFixture;
using lsp_test::FeatureOptions;
using lsp_test::Json;

struct GotoCase {
    const char* why;
    const char* text;
};

void ExpectMarks(const char* method, const std::vector<GotoCase>& cases)
{
    for (const GotoCase& c : cases) {
        const FeatureFixture fixture(c.text);
        EXPECT_EQ(fixture.Places(fixture.Ask(method)), fixture.Marks()) << c.why;
    }
}

TEST(Goto, ADefinitionIsFoundInAnotherFile)
{
    ExpectMarks("textDocument/definition",
                {{"a function", "== shape.h\nint area();\n"
                                "== shape.cpp\n#include \"shape.h\"\nint «area»() { return 1; }\n"
                                "== main.cpp\n#include \"shape.h\"\nint x = ar|ea();\n"}});
}

} // namespace
