#include "wren/lsp/protocol/Uri.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using wren::lsp::PathOfUri;
using wren::lsp::UriOfPath;

const struct {
    const char* uri;
    const char* path; // null when it names no file
} kUris[] = {
    {"file:///a/b.c", "/a/b.c"},      {"file:/a/b.c", "/a/b.c"},       {"file://localhost/a/b.c", "/a/b.c"},
    {"FILE:///a/b.c", "/a/b.c"},      {"file:///a%20b", "/a b"},       {"file:///a b", "/a b"},
    {"file:///%61%2Fb", "/a/b"},      {"file:///a%23b%25", "/a#b%"},   {"file:///a%2", "/a%2"},
    {"file:///a%zz", "/a%zz"},        {"file:///%ff%FE", "/\xff\xfe"}, {"file:///a?query#fragment", "/a"},
    {"file:///a%00b", nullptr},       {"file://host/a", nullptr},      {"file:a", nullptr},
    {"untitled:Untitled-1", nullptr}, {"http://localhost/a", nullptr}, {"", nullptr},
};

TEST(Uri, NamesAFileInManyWays)
{
    for (const auto& each : kUris) {
        const std::optional<std::string> path = PathOfUri(each.uri);
        EXPECT_EQ(path, each.path == nullptr ? std::nullopt : std::optional<std::string>(each.path)) << each.uri;
    }
}

TEST(Uri, EncodesAllButPlainLetters)
{
    EXPECT_EQ(UriOfPath("/a b/ä#%?.c"), "file:///a%20b/%C3%A4%23%25%3F.c");
    EXPECT_EQ(UriOfPath("/a-b_c.d~e"), "file:///a-b_c.d~e");
}

} // namespace
