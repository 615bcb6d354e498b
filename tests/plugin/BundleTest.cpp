// The library in the bundle, as the editor's loader sees it.

#include "tests/support/ShellWord.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <dlfcn.h>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string OutputOf(const std::string& command)
{
    std::string output;
    std::array<char, 4096> buffer;
    FILE* pipe = ::popen(command.c_str(), "r");
    if (pipe == nullptr)
        return output;
    while (const size_t size = std::fread(buffer.data(), 1, buffer.size(), pipe))
        output.append(buffer.data(), size);
    EXPECT_EQ(::pclose(pipe), 0) << command;
    return output;
}

// The last word of each line that has 'mark' in it.
std::set<std::string> LastWords(const std::string& text, const std::string& mark)
{
    std::set<std::string> words;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);)
        if (line.find(mark) != std::string::npos)
            words.insert(line.substr(line.find_last_of(' ') + 1));
    return words;
}

TEST(Bundle, ExportsItsTwoEntryPointsAndNothingElse)
{
    const std::set<std::string> exported =
        LastWords(OutputOf("nm -D --defined-only " + ShellWord(DECLARATION_LIBRARY)), " ");
    EXPECT_EQ(exported, (std::set<std::string>{"PluginHelp", "PluginMain"}));
}

TEST(Bundle, LinksOnlyTheFrameworkAndTheStandardLibrary)
{
    std::set<std::string> allowed = {"[libvetch.so]", "[libstdc++.so.6]",       "[libgcc_s.so.1]",        "[libc.so.6]",
                                     "[libm.so.6]",   "[ld-linux-x86-64.so.2]", "[ld-linux-aarch64.so.1]"};
    const std::string sanitize = SANITIZE; // such a build has the sanitizer's own runtime besides
    if (!sanitize.empty())
        allowed.insert({"[libasan.so.8]", "[libubsan.so.1]", "[libtsan.so.2]"});
    const std::set<std::string> needed =
        LastWords(OutputOf("readelf -d " + ShellWord(DECLARATION_LIBRARY)), "(NEEDED)");
    EXPECT_THAT(needed, testing::Contains("[libvetch.so]"));
    for (const std::string& library : needed)
        EXPECT_THAT(allowed, testing::Contains(library));
}

// Threads that generate tags are not waited for when the editor lets go of the library.
TEST(Bundle, StaysLoaded)
{
    void* const library = ::dlopen(DECLARATION_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << ::dlerror();
    ::dlclose(library);
    void* const again = ::dlopen(DECLARATION_LIBRARY, RTLD_NOW | RTLD_LOCAL | RTLD_NOLOAD);
    EXPECT_NE(again, nullptr);
    if (again != nullptr)
        ::dlclose(again);
}

} // namespace
