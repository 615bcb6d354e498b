#include "wren/symbols/Signatures.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

using testing::ElementsAreArray;

TEST(ParametersOf, Cases)
{
    const struct {
        const char* signature;
        std::vector<std::string> parameters;
    } kCases[] = {
        {"(int a,char * b)", {"int a", "char * b"}},
        {"()", {}},
        {"(void)", {}},
        {"(std::map<int,char> m,int (* f)(int,int)) const", {"std::map<int,char> m", "int (* f)(int,int)"}},
        {"<class T,int N>", {"class T", "int N"}},
        {"<template<class,class> class C,class D>", {"template<class,class> class C", "class D"}},
        {"(a, ...)", {"a", "..."}},
        {"(unfinished, b", {"unfinished"}},
        {"(a,,b)", {"a", "", "b"}},
        {"", {}},
    };
    for (const auto& each : kCases)
        EXPECT_THAT(wren::ParametersOf(each.signature), ElementsAreArray(each.parameters)) << each.signature;
}

TEST(ParametersOf, AnEmptyOneStandsInTheSignatureToo)
{
    const std::string_view signature = "(a,,b)";
    EXPECT_EQ(wren::ParametersOf(signature)[1].data() - signature.data(), 3);
}

TEST(WithBlanksBehindCommas, Cases)
{
    const struct {
        const char* signature;
        const char* written;
    } kCases[] = {
        {"(int a,int b)", "(int a, int b)"},
        {"(int a, int b)", "(int a, int b)"},
        {"(std::map<int,char> m) const", "(std::map<int, char> m) const"},
        {"(char c=',',int d)", "(char c=',', int d)"},
        {"(const char * s=\"a,\\\",b\",int d)", "(const char * s=\"a,\\\",b\", int d)"},
        {"(char c='\\'',int d)", "(char c='\\'', int d)"},
        {"(int a=1'000,int b)", "(int a=1'000, int b)"},
        {"(a,...)", "(a, ...)"},
        {"(a,", "(a,"},
        {"(char c='", "(char c='"},
        {"(char c='\\", "(char c='\\"},
        {"", ""},
    };
    for (const auto& each : kCases)
        EXPECT_EQ(wren::WithBlanksBehindCommas(each.signature), each.written) << each.signature;
}
