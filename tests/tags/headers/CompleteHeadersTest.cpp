// Completions from the tags of all headers of a machine equal the results of another program.
#include "tests/support/ExpectedMatches.h"
#include "tests/support/RunProgram.h"
#include "tests/support/ShellWord.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {

using nlohmann::json;

constexpr size_t kMostShown = 200;

// A home with the headers' tags as its system tags, and a place for documents.
class CompleteHeaders : public ::testing::Test {
protected:
    CompleteHeaders()
    {
        std::filesystem::create_directories(home / "Library/Caches");
        std::filesystem::create_symlink(HEADER_TAGS, home / "Library/Caches/SystemHeaderTags");
    }

    ProgramRun Complete(const std::string& text, const std::vector<std::string>& words) const
    {
        home.Write("a.mm", text);
        std::vector<std::string> command{WREN_PROGRAM, "complete", "a.mm:1", "--home", home.Path()};
        command.insert(command.end(), words.begin(), words.end());
        return RunProgram(command, home.Path());
    }

    // The answers to the lines, in order.
    std::vector<json> Script(const std::vector<json>& lines) const
    {
        std::string text;
        for (const json& line : lines)
            text += line.dump() + "\n";
        home.Write("session.jsonl", text);
        const std::string command = ShellWord(WREN_PROGRAM) + " script --home " + ShellWord(home.Path());
        const ProgramRun run = RunProgram({"/bin/sh", "-c", command + " <session.jsonl"}, home.Path());
        EXPECT_EQ(run.status, 0) << run.errors;
        std::istringstream output(run.output);
        std::vector<json> answers;
        for (std::string answer; std::getline(output, answer);)
            answers.push_back(json::parse(answer));
        return answers;
    }

    TempDirectory home;
};

// A text that ends with the prefix; a prefix with one colon is a selector, and is placed in a message.
std::string TextFor(const std::string& prefix)
{
    const size_t colon = prefix.find(':');
    if (colon == std::string::npos || prefix.compare(colon, 2, "::") == 0)
        return "x = " + prefix;
    return "[x " + std::string(prefix).insert(colon + 1, "y ");
}

// Whether typing its last character completes: a colon does not.
bool CompletesWhenTyped(const std::string& prefix)
{
    return prefix.back() != ':';
}

std::vector<std::string> ShownIn(const json& state)
{
    for (const json& window : state.at("state").at("windows"))
        if (window.at("visible") && !window.at("list").is_null())
            return window.at("list").at("items");
    return {};
}

// The names that the list shows: none if there are too many, or if nothing is left to complete.
std::vector<std::string> ExpectedList(const ExpectedLookup& lookup)
{
    const bool isWhole = lookup.matches == std::vector{lookup.pattern};
    return isWhole || lookup.matches.size() >= kMostShown ? std::vector<std::string>() : lookup.matches;
}

std::string Lines(const std::vector<std::string>& names, size_t most)
{
    std::string text;
    for (size_t i = 0; i < std::min(names.size(), most); ++i)
        text += names[i] + "\n";
    return text;
}

std::string CommonBeginning(const std::vector<std::string>& names)
{
    std::string common = names.front();
    for (const std::string& name : names)
        common.erase(std::mismatch(common.begin(), common.end(), name.begin(), name.end()).first, common.end());
    return common;
}

} // namespace

TEST_F(CompleteHeaders, TheListWhileTypingAgreesWithAnIndependentReader)
{
    std::vector<ExpectedLookup> lookups = ExpectedLookups(EXPECTED_COMPLETIONS);
    ASSERT_EQ(lookups.size(), 100u);
    std::erase_if(lookups, [](const ExpectedLookup& lookup) { return !CompletesWhenTyped(lookup.pattern); });
    std::cout << "typing " << lookups.size() << " prefixes\n";
    ASSERT_GT(lookups.size(), 80u);

    std::vector<json> lines{{{"do", "document"}, {"path", home / "a.mm"}, {"text", "x = st"}},
                            {{"do", "select"}, {"start", 6}},
                            {{"do", "key"}, {"key", "r"}},             // now the names are loaded
                            {{"do", "settle"}, {"timeout", 3600000}}}; // enough for a busy machine
    const size_t preparations = lines.size();
    for (const ExpectedLookup& lookup : lookups) {
        const std::string text = TextFor(lookup.pattern);
        lines.push_back({{"do", "text"}, {"text", text.substr(0, text.size() - 1)}});
        lines.push_back({{"do", "select"}, {"start", text.size() - 1}});
        lines.push_back({{"do", "key"}, {"key", std::string(1, text.back())}});
        lines.push_back({{"do", "state"}});
    }
    const std::vector<json> answers = Script(lines);
    ASSERT_EQ(answers.size(), lines.size());
    size_t lists = 0;
    for (size_t i = 0; i < lookups.size(); ++i) {
        const std::vector<std::string> shown = ShownIn(answers[preparations + 4 * i + 3]);
        EXPECT_EQ(shown, ExpectedList(lookups[i])) << lookups[i].pattern;
        lists += !shown.empty();
    }
    EXPECT_GT(lists, 50u);
    std::cout << lists << " lists compared\n";
}

TEST_F(CompleteHeaders, TheCommandLineOffersTheSameAsTyping)
{
    const std::vector<ExpectedLookup> lookups = ExpectedLookups(EXPECTED_COMPLETIONS);
    constexpr size_t kStep = 20 * kLookupStep; // each needs a load
    std::cout << "completing " << (lookups.size() + kStep - 1) / kStep << " of " << lookups.size() << " prefixes\n";
    for (size_t i = 1; i < lookups.size(); i += kStep) {
        const std::string expected =
            CompletesWhenTyped(lookups[i].pattern) ? Lines(ExpectedList(lookups[i]), kMostShown) : "";
        const ProgramRun run = Complete(TextFor(lookups[i].pattern), {"--auto"});
        EXPECT_EQ(run.output, expected) << lookups[i].pattern << run.errors;
        EXPECT_EQ(run.status, expected.empty() ? 1 : 0) << lookups[i].pattern;
    }
}

TEST_F(CompleteHeaders, TheCommandAgreesWithAnIndependentReader)
{
    std::vector<ExpectedLookup> lookups = ExpectedLookups(EXPECTED_CANDIDATES);
    // If all candidates continue alike, there is no list.
    std::erase_if(lookups, [](const ExpectedLookup& lookup) {
        return lookup.matches.size() < 2 || CommonBeginning(lookup.matches).size() > lookup.pattern.size();
    });
    constexpr size_t kStep = (kLookupStep + 1) / 2;
    std::cout << "completing " << (lookups.size() + kStep - 1) / kStep << " prefixes\n";
    ASSERT_GE(lookups.size(), 5u);
    for (size_t i = 0; i < lookups.size(); i += kStep) {
        const ProgramRun run = Complete(TextFor(lookups[i].pattern), {});
        EXPECT_EQ(run.output, Lines(lookups[i].matches, kMostShown)) << lookups[i].pattern << run.errors;
        EXPECT_EQ(run.errors.empty(), lookups[i].matches.size() <= kMostShown) << lookups[i].pattern << run.errors;
        EXPECT_EQ(run.status, 0) << lookups[i].pattern;
    }
}
