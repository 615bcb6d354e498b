#include "wren/symbols/LinePlace.h"

#include <gtest/gtest.h>

using Sort = wren::TextPlace::Sort;

TEST(LinePlace, Cases)
{
    const struct {
        const char* line;
        Sort sort;
        size_t wordSize;
    } kCases[] = {
        {"", Sort::Unqualified, 0},
        {"    val", Sort::Unqualified, 3},
        {"f(a.", Sort::Member, 0},
        {"f(a.si", Sort::Member, 2},
        {"a->", Sort::Member, 0},
        {"f()->x", Sort::Member, 1},
        {"v[1].", Sort::Member, 0},
        {"a - >", Sort::Unqualified, 0},
        {"std::", Sort::Qualified, 0},
        {"std::ve", Sort::Qualified, 2},
        {"c ? x : y", Sort::Unqualified, 1},
        {"1.", Sort::Unqualified, 0},
        {"1.5", Sort::Unqualified, 1},
        {"x1.", Sort::Member, 0},
        {"f(int, ...", Sort::Unqualified, 0},
        {"    .fiel", Sort::Member, 4},
        {"#include <", Sort::Include, 0},
        {"#include <vec", Sort::Include, 3},
        {"  #  include \"a/b.", Sort::Include, 2},
        {"#include <a/", Sort::Include, 0},
        {"#include <a>", Sort::Unqualified, 0},
        {"#include <a> // b.c", Sort::Member, 1},
        {"#define A <a", Sort::Unqualified, 1},
        {"#import \"Fo", Sort::Include, 2},
        {"#include ", Sort::Unqualified, 0},
    };
    for (const auto& each : kCases) {
        SCOPED_TRACE(each.line);
        const wren::LinePlace place = wren::PlaceAtEnd(each.line);
        EXPECT_EQ(place.sort, each.sort);
        EXPECT_EQ(place.wordSize, each.wordSize);
    }
}
