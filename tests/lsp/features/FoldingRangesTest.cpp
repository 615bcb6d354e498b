#include "wren/lsp/features/FoldingRanges.h"

#include <gtest/gtest.h>

namespace {

using wren::lsp::FoldingRange;

// "0-3 5-6c": first and last lines, "c" for comments and "i" for includes.
std::string FoldsOf(const std::string& text)
{
    std::string folds;
    for (const FoldingRange& fold : wren::lsp::FoldsOf(wren::lsp::Text(text))) {
        folds += folds.empty() ? "" : " ";
        folds += std::to_string(fold.startLine) + "-" + std::to_string(fold.endLine);
        folds += fold.kind == FoldingRange::Kind::Comment ? "c" : "";
        folds += fold.kind == FoldingRange::Kind::Imports ? "i" : "";
    }
    return folds;
}

} // namespace

TEST(FoldsOf, Cases)
{
    const struct {
        const char* why;
        const char* text;
        const char* folds;
    } kCases[] = {
        {"an empty text", "", ""},
        {"a function ends before its brace", "int f()\n{\n    a();\n    b();\n}\n", "1-3"},
        {"a block on one line", "int f() { return 1; }\n", ""},
        {"a block with nothing between", "int f() {\n}\n", ""},
        {"blocks in blocks", "int f() {\n  if (a) {\n    b();\n  }\n}\n", "0-3 1-2"},
        {"an unclosed brace", "int f() {\n  a();\n", ""},
        {"braces in strings", "char a[] = \"{\";\nint b;\nchar c[] = \"}\";\n", ""},
        {"branches", "#if A\nint a;\n#else\nint b;\nint c;\n#endif\n", "0-1 2-4"},
        {"branches in branches", "#ifdef A\n#if B\nint b;\n#endif\n#endif\n", "0-3 1-2"},
        {"an #endif too many", "#endif\nint a;\n", ""},
        {"includes", "#include <a>\n\n#include <b>\n#include <c>\nint a;\n", "0-3i"},
        {"a single include", "#include <a>\nint a;\n", ""},
        {"includes with code between", "#include <a>\nint a;\n#include <b>\n", ""},
        {"a comment", "/* a\n   b\n */\nint a;\n", "0-2c"},
        {"a comment on one line", "/* a */ int a;\n", ""},
        {"a run of line comments", "// a\n// b\n// c\n\n// d\nint a;\n", "0-2c"},
        {"an unclosed comment", "/* a\nb\n", "0-2c"},
        {"comments in strings", "char a[] = \"/*\";\nchar b[] = \"*/\";\n", ""},
        {"a comment in a block", "{\n  // a\n  // b\n}\n", "0-2 1-2c"},
        {"other line breaks", "{\r\n  a;\r\n  b;\r\n}\r\n", "0-2"},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(FoldsOf(each.text), each.folds) << each.why;
}
