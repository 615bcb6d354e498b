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
        {"", {}},
    };
    for (const auto& each : kCases)
        EXPECT_THAT(wren::ParametersOf(each.signature), ElementsAreArray(each.parameters)) << each.signature;
}
