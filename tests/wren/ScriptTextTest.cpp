// Characters and cells in the script's face.
#include "wren/core/Document.h"
#include "wren/script/GridFace.h"
#include "wren/text/PlainText.h"

#include <gtest/gtest.h>

using wren::Document;

namespace {

class Grid : public wren::GridFace {
public:
    void OpenMatch(const std::string&, long) override {}
    void Warn(const std::string&) override {}
};

Document Made(const std::string& text, long caret)
{
    auto store = std::make_unique<wren::PlainText>();
    store->SetText(text);
    store->Select(caret, caret);
    return Document(1, "", std::move(store), false);
}

} // namespace

TEST(GridFace, PutsEachCharacterIntoItsCell)
{
    const Document document = Made("ab\nc\xc3\xa9z", 0);
    const struct {
        const char* why;
        long offset;
        BPoint point;
    } kCases[] = {
        {"the first", 0, {48, 96}},
        {"the second column", 1, {55, 96}},
        {"the second line", 3, {48, 111}},
        {"two bytes are one character", 6, {62, 111}},
        {"in the middle of a character: its left edge", 5, {55, 111}},
        {"the end of the text", 7, {69, 111}},
        {"past the end", 99, {69, 111}},
        {"before the beginning", -1, {48, 96}},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Grid().PointAt(document, each.offset), each.point) << each.why;
}

TEST(GridFace, FindsTheCharacterUnderAPoint)
{
    const Document document = Made("ab\nc\xc3\xa9z\n", 0);
    const struct {
        const char* why;
        BPoint where;
        long offset;
    } kCases[] = {
        {"the first cell", {0, 0}, 0},        {"its last pixels", {6.9f, 14.9f}, 0},
        {"the next column", {7, 0}, 1},       {"past the line's end", {500, 0}, 2},
        {"the second line", {0, 15}, 3},      {"behind a character of two bytes", {14, 15}, 6},
        {"the empty last line", {30, 30}, 8}, {"past the text", {0, 500}, 8},
        {"left of the text", {-20, 15}, 3},   {"above the text", {7, -20}, 1},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Grid().OffsetAt(document, each.where), each.offset) << each.why;
}

TEST(GridFace, FindsEachCharacterAtTheCentreOfItsCell)
{
    const Document document = Made("ab\n\nc\xc3\xa9z", 0);
    for (const long offset : {0L, 1L, 2L, 3L, 4L, 5L, 7L, 8L})
        EXPECT_EQ(Grid().OffsetAt(document, Grid().CellCentre(document, offset)), offset);
}
