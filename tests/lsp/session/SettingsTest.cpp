#include "wren/lsp/session/Settings.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using wren::lsp::Json;
using wren::lsp::Settings;

TEST(Settings, TakeWhatIsGivenAndKeepTheRest)
{
    Settings settings;
    const Json given = {{"tags", {"tags", "/usr/tags"}},
                        {"completion", {{"limit", 7u}, {"snippets", false}}},
                        {"references", {{"comments", true}}},
                        {"systemHeaders", false}};
    EXPECT_TRUE(Apply(given, settings).empty());
    EXPECT_EQ(settings.tags, (std::vector<std::string>{"tags", "/usr/tags"}));
    EXPECT_EQ(settings.completionLimit, 7u);
    EXPECT_FALSE(settings.snippets);
    EXPECT_TRUE(settings.commentsInReferences);
    EXPECT_FALSE(settings.systemHeaders);
    EXPECT_TRUE(settings.index);
}

const char* const kWrong[] = {
    R"({"colour": "red"})",
    R"({"tags": "tags"})",
    R"({"tags": [5]})",
    R"({"index": "yes"})",
    R"({"completion": {"limit": 0}})",
    R"({"completion": {"limit": -3}})",
    R"({"completion": {"limit": 1e9}})",
    R"({"completion": {"limit": 1.5}})",
    R"({"completion": {"speed": 1}})",
    R"({"completion": true})",
    R"({"references": []})",
    R"([])",
    R"(5)",
};

TEST(Settings, SayWhatCannotBeUsedAndKeepTheDefault)
{
    for (const char* const each : kWrong) {
        Settings settings;
        EXPECT_EQ(Apply(Json::parse(each), settings).size(), 1u) << each;
        EXPECT_EQ(settings, Settings()) << each;
    }
}

TEST(Settings, NullMeansTheDefault)
{
    Settings settings;
    EXPECT_TRUE(Apply(nullptr, settings).empty());
    EXPECT_TRUE(Apply({{"tags", nullptr}, {"completion", {{"limit", nullptr}}}}, settings).empty());
    EXPECT_EQ(settings, Settings());
}

} // namespace
