#include "wren/symbols/CallPlaces.h"

#include <gtest/gtest.h>

namespace {

// The names at the places, with blanks between them.
std::string Called(const std::string& text, size_t limit = 100)
{
    std::string names;
    for (const size_t place : wren::CallPlaces(text, 0, text.size(), limit))
        names += text.substr(place, text.find_first_of(" (:]", place) - place) + " ";
    return names;
}

} // namespace

TEST(CallPlaces, Cases)
{
    const struct {
        const char* why;
        const char* text;
        const char* names;
    } kCases[] = {
        {"calls in calls", "{ f(g(x), y); }", "f g "},
        {"a blank before the parenthesis", "f (x);", "f "},
        {"a message without arguments", "[shelf lock];", "lock "},
        {"a message with arguments", "[shelf put:book at:2];", "put at "},
        {"no call", "int x = y;", ""},
        {"a number is not a name", "3(x)", ""},
        {"the end of the text", "f", ""},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(Called(each.text), each.names) << each.why;
}

TEST(CallPlaces, AreLimited)
{
    EXPECT_EQ(Called("a() b() c()", 2), "a b ");
}

TEST(CallPlaces, StayInTheirRange)
{
    const std::string text = "a() b() c()";
    EXPECT_EQ(wren::CallPlaces(text, 4, 7, 100), std::vector<size_t>{4});
}
