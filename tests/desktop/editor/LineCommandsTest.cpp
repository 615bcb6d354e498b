// Commands on whole lines. "[" and "]" stand around the selection, "|" at the caret.
#include "wren/desktop/editor/LineCommands.h"
#include "wren/desktop/editor/CodeView.h"

#include <gtest/gtest.h>

namespace wren {
namespace {

struct LineCase {
    LineCommand command;
    const char* before;
    const char* after;
};

// Shows the text with its marks, applies the command, and returns the text.
void ShowMarked(CodeView& view, std::string marked)
{
    const size_t caret = marked.find('|');
    size_t start = caret;
    size_t end = caret;
    if (caret != std::string::npos) {
        marked.erase(caret, 1);
    } else {
        start = marked.find('[');
        marked.erase(start, 1);
        end = marked.find(']');
        marked.erase(end, 1);
    }
    view.SetBytes(marked);
    ViewText(view).Select(static_cast<long>(start), static_cast<long>(end));
}

using enum LineCommand;

constexpr LineCase kLineCases[] = {
    {ToggleComment, "int |a;\n", "// int a;\n"},
    {ToggleComment, "// int |a;\n", "int a;\n"},
    {ToggleComment, "//int |a;\n", "int a;\n"},
    {ToggleComment, "[if (a) {\n    b();\n\n}\n]c;\n", "// if (a) {\n//     b();\n\n// }\nc;\n"},
    {ToggleComment, "[// a;\nb;]\n", "// // a;\n// b;\n"},
    {ToggleComment, "\t[a;\n\t\tb;]\n", "\t// a;\n\t// \tb;\n"},
    {ToggleComment, "|\n", "\n"},
    {ToggleComment, "|", ""},
    {MoveUp, "a\nb|\nc\n", "b\na\nc\n"},
    {MoveUp, "a|\nb\n", "a\nb\n"},
    {MoveDown, "a|\nb\nc\n", "b\na\nc\n"},
    {MoveDown, "[a\nb]\nc\n", "c\na\nb\n"},
    {Duplicate, "a|b\nc\n", "ab\nab\nc\n"},
    {Delete, "a\nb|b\nc\n", "a\nc\n"},
    {Delete, "a\n[bb\nc\n]d\n", "a\nd\n"},
    {Delete, "a\nb|", "a"},
    {Delete, "only|", ""},
    {Delete, "|", ""},
    {Join, "a|  \n    b\nc\n", "a b\nc\n"},
    {Join, "[a\n b\n c]\nd\n", "a b c\nd\n"},
    {Join, "a|\n\nb\n", "a\nb\n"},
    {Join, "last|", "last"},
    {UpperCase, "[abc]d\n", "ABCd\n"},
    {LowerCase, "[ABC]D\n", "abcD\n"},
    {LowerCase, "A|B\n", "AB\n"},
};

} // namespace

TEST(LineCommands, ChangeTheTextInOneStepToUndo)
{
    for (const LineCase& each : kLineCases) {
        CodeView view;
        view.SetLanguageFor("a.c");
        ShowMarked(view, each.before);
        const std::string before = view.Bytes();
        view.Apply(each.command, "//");
        EXPECT_EQ(view.Bytes(), each.after) << each.before;
        if (view.Bytes() != before)
            view.undo();
        EXPECT_EQ(view.Bytes(), before) << each.before;
    }
}

TEST(CommentMarks, BelongToTheFilesName)
{
    const std::pair<const char*, const char*> kMarks[] = {
        {"a.c", "//"}, {"/x/a.hpp", "//"},         {"a.py", "#"}, {"Makefile", "#"}, {"/x/CMakeLists.txt", "#"},
        {"a.md", ""},  {"/x/notMakefile.txt", ""}, {"", ""},
    };
    for (const auto& [path, mark] : kMarks)
        EXPECT_EQ(CommentMark(path), mark) << path;
}

} // namespace wren
