// A document's text is the same through the store of a view as through the one that no screen shows.
#include "wren/desktop/editor/CodeView.h"
#include "wren/text/PlainText.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <random>
#include <vector>

namespace wren {
namespace {

using namespace std::string_literals;

struct Both {
    CodeView view;
    std::unique_ptr<TextStore> shown = view.MakeStore();
    PlainText plain;

    void Do(const std::function<void(TextStore&)>& operation)
    {
        operation(*shown);
        operation(plain);
    }
};

void ExpectSame(const Both& both, const std::string& why)
{
    ASSERT_EQ(both.shown->Text(), both.plain.Text()) << why;
    ASSERT_EQ(both.shown->Length(), both.plain.Length()) << why;
    ASSERT_EQ(both.shown->Selected().start, both.plain.Selected().start) << why;
    ASSERT_EQ(both.shown->Selected().end, both.plain.Selected().end) << why;
    for (long at = -1; at <= both.plain.Length() + 1; at++) {
        ASSERT_EQ(both.shown->CharAt(at), both.plain.CharAt(at)) << why << ", at " << at;
        ASSERT_EQ(both.shown->LineAt(at), both.plain.LineAt(at)) << why << ", at " << at;
    }
    for (long line = -1; line <= both.plain.LineAt(both.plain.Length()) + 2; line++) {
        ASSERT_EQ(both.shown->LineStart(line), both.plain.LineStart(line)) << why << ", line " << line;
        ASSERT_EQ(both.shown->LineEnd(line), both.plain.LineEnd(line)) << why << ", line " << line;
    }
}

struct Case {
    const char* why;
    std::string text;
    std::function<void(TextStore&)> operation;
};

const Case kCases[] = {
    {"nothing in it", "", [](TextStore&) {}},
    {"Unix ends", "a\nb\n", [](TextStore&) {}},
    {"Windows ends", "a\r\nb\r\n", [](TextStore&) {}},
    {"no newline at the end", "a\nb", [](TextStore&) {}},
    {"a return alone ends no line", "a\rb\nc\r", [](TextStore&) {}},
    {"returns only", "a\rb\rc", [](TextStore&) {}},
    {"a NUL among others", "a\0b\n\0"s, [](TextStore& t) { t.Insert(2, "\0\0"s); }},
    {"invalid UTF-8", "\x80\xff\n\xc3", [](TextStore& t) { t.Insert(1, "\xe2\x82"); }},
    {"half a character goes", "\xc3\xa4\n", [](TextStore& t) { t.Delete(0, 1); }},
    {"a newline between return and newline", "a\r\nb", [](TextStore& t) { t.Insert(2, "x"); }},
    {"return and newline meet", "a\rx\nb", [](TextStore& t) { t.Delete(2, 1); }},
    {"the newline of a pair goes", "a\r\nb", [](TextStore& t) { t.Delete(2, 1); }},
    {"the return of a pair goes", "a\r\nb", [](TextStore& t) { t.Delete(1, 1); }},
    {"offsets outside", "abc", [](TextStore& t) { t.Insert(99, "x"), t.Insert(-3, "y"), t.Delete(3, 99); }},
    {"nothing deleted behind the end", "abc", [](TextStore& t) { t.Delete(9, 1), t.Delete(1, 0), t.Delete(1, -1); }},
    {"a selection the wrong way round", "abcdef", [](TextStore& t) { t.Select(4, 1); }},
    {"a selection outside", "abcdef", [](TextStore& t) { t.Select(-4, 100); }},
    {"a selection inside a pair of line ends", "a\r\nb", [](TextStore& t) { t.Select(2, 2), t.Insert(0, "x"); }},
    {"a selection inside a character", "\xc3\xa4\n", [](TextStore& t) { t.Select(1, 1), t.Insert(0, "x"); }},
    {"a caret where text comes stays", "abcd", [](TextStore& t) { t.Select(2, 2), t.Insert(2, "xy"); }},
    {"a selection's start where text comes stays", "abcd", [](TextStore& t) { t.Select(2, 3), t.Insert(2, "xy"); }},
    {"a selection's end where text comes stays", "abcd", [](TextStore& t) { t.Select(1, 2), t.Insert(2, "xy"); }},
    {"a selection that goes", "abcdef", [](TextStore& t) { t.Select(2, 4), t.Delete(1, 4); }},
    {"a new text forgets", "abc", [](TextStore& t) { t.Insert(0, "x"), t.Select(2, 3), t.SetText("new\n"), t.Undo(); }},
    {"a group is undone at once", "abc",
     [](TextStore& t) {
         t.BeginUndo({1, 2}, "Name"), t.Insert(0, "x"), t.Delete(2, 1), t.CloseUndo(), t.Undo();
     }},
    {"a group that is still open", "abc",
     [](TextStore& t) {
         t.BeginUndo({1, 2}, "Name"), t.Insert(0, "x"), t.Undo();
     }},
    {"an empty group is nothing to undo", "abc",
     [](TextStore& t) {
         t.Insert(0, "x"), t.BeginUndo({1, 2}, "Name"), t.CloseUndo(), t.Undo();
     }},
    {"the next group ends the one before", "abc",
     [](TextStore& t) {
         t.BeginUndo({1, 1}, "1"), t.Insert(0, "x"), t.BeginUndo({2, 2}, "2"), t.Insert(0, "y"), t.Undo();
     }},
    {"edits alone", "abc", [](TextStore& t) { t.Select(1, 3), t.Insert(0, "x"), t.Insert(1, "y"), t.Undo(); }},
};

TEST(CodeViewStore, BehavesLikePlainText)
{
    for (const Case& c : kCases) {
        Both both;
        both.Do([&](TextStore& store) { store.SetText(c.text), c.operation(store); });
        ExpectSame(both, c.why);
    }
}

const char* const kPieces[] = {"a", "\n", "\r\n", "\r", "{", "\xc3\xa4", "\xff", "word ", "\t", "/*", "a\nb\nc"};

void DoSomething(Both& both, std::mt19937& random)
{
    const long length = both.plain.Length();
    const long a = static_cast<long>(random() % (length + 3)) - 1;
    const long b = static_cast<long>(random() % 6) - 1;
    const std::string piece = random() % 20 == 0 ? "\0"s : kPieces[random() % std::size(kPieces)];
    switch (random() % 12) {
    case 0:
        return both.Do([&](TextStore& t) { t.Select(a, a + b); });
    case 1:
        return both.Do([&](TextStore& t) { t.BeginUndo({a, a + b}, piece); });
    case 2:
        return both.Do([&](TextStore& t) { t.CloseUndo(); });
    case 3:
        ASSERT_EQ(both.shown->Undo(), both.plain.Undo());
        return;
    case 4:
    case 5:
    case 6:
        return both.Do([&](TextStore& t) { t.Delete(a, b); });
    default:
        return both.Do([&](TextStore& t) { t.Insert(a, piece); });
    }
}

TEST(CodeViewStore, BehavesLikePlainTextThroughRandomOperations)
{
    for (unsigned seed = 0; seed < 20; seed++) {
        std::mt19937 random(seed);
        Both both;
        for (int step = 0; step < 300; step++) {
            DoSomething(both, random);
            ASSERT_NO_FATAL_FAILURE(
                ExpectSame(both, "seed " + std::to_string(seed) + ", step " + std::to_string(step)));
        }
        while (both.plain.Length() > 0 && !HasFatalFailure()) {
            const auto name = both.plain.Undo();
            ASSERT_EQ(both.shown->Undo(), name);
            ASSERT_NO_FATAL_FAILURE(ExpectSame(both, "undone, seed " + std::to_string(seed)));
            if (!name)
                break;
        }
    }
}

TEST(CodeViewStore, CopiesOnlyExistingBytes)
{
    Both both;
    both.Do([](TextStore& t) { t.SetText("abc"); });
    for (const auto& [offset, length] : {std::pair(-2L, 4L), {1L, 9L}, {5L, 2L}, {-5L, 2L}, {0L, 0L}, {0L, 3L}}) {
        std::string shown(12, '.');
        std::string plain(12, '.');
        both.shown->GetText(shown.data(), offset, length);
        both.plain.GetText(plain.data(), offset, length);
        EXPECT_EQ(shown, plain) << offset << ", " << length;
    }
}

TEST(CodeViewStore, IsEmptyAfterTheViewDied)
{
    auto view = std::make_unique<CodeView>();
    const std::unique_ptr<TextStore> store = view->MakeStore();
    store->SetText("abc\n");
    store->BeginUndo({0, 0}, "Name");
    store->Insert(0, "x");
    view.reset();
    char byte = '.';
    store->Insert(0, "y");
    store->Delete(0, 1);
    store->Select(0, 1);
    store->CloseUndo();
    store->SetText("z");
    store->GetText(&byte, 0, 1);
    EXPECT_EQ(store->Text(), "");
    EXPECT_EQ(store->Length(), 0);
    EXPECT_EQ(store->CharAt(0), '\0');
    EXPECT_EQ(byte, '.');
    EXPECT_EQ(store->LineAt(1) + store->LineStart(1) + store->LineEnd(1), 0);
    EXPECT_EQ(store->Selected(), Selection());
    EXPECT_EQ(store->Undo(), std::nullopt);
}

} // namespace
} // namespace wren
