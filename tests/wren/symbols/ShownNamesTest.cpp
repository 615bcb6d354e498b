#include "wren/symbols/ShownNames.h"

#include <gtest/gtest.h>

TEST(WithoutMadeNames, Cases)
{
    const struct {
        const char* why;
        const char* name;
        const char* shown;
    } kCases[] = {
        {"a plain name", "a::b", "a::b"},
        {"an unnamed namespace", "wren::__anon000000000111::Find", "wren::(unnamed)::Find"},
        {"several", "__anon0123456789ab::__anon0123456789ac", "(unnamed)::(unnamed)"},
        {"a user's own name", "__anonymous", "__anonymous"},
        {"the beginning only", "x::__anon", "x::__anon"},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::WithoutMadeNames(each.name), each.shown) << each.why;
}

TEST(QualifiedName, HasTheScopeAndTheSignatureAsPeopleWriteIt)
{
    tagging::Symbol symbol;
    symbol.name = "Sum";
    symbol.scope = "__anon000000000111::Counter";
    symbol.signature = "(int a,char * b = \",\") const";
    EXPECT_EQ(wren::QualifiedName(symbol), "(unnamed)::Counter::Sum(int a, char * b = \",\") const");
    symbol.scope = {};
    symbol.signature = {};
    EXPECT_EQ(wren::QualifiedName(symbol), "Sum");
}
