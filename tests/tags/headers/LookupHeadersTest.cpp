// Lookups in the tags of all headers of a machine find what another program reads there.
#include "tests/support/ExpectedMatches.h"
#include "tests/support/RunProgram.h"

#include <gtest/gtest.h>
#include <iostream>
#include <sstream>

namespace {

constexpr size_t kMostMatches = 41; // a list of matches has no more

// "path:line" of each match, as printed by 'wren lookup'.
std::string ExpectedOutput(const ExpectedLookup& lookup)
{
    std::string output;
    for (size_t i = 0; i < lookup.matches.size() && i < kMostMatches; ++i) {
        std::istringstream fields(lookup.matches[i]);
        std::string name, kind, line, file;
        std::getline(fields, name, '\t');
        std::getline(fields, kind, '\t');
        std::getline(fields, line, '\t');
        std::getline(fields, file, '\t');
        output += file + ":" + line + "\n";
    }
    return output;
}

std::string WithoutItems(const std::string& output)
{
    std::istringstream lines(output);
    std::string places;
    for (std::string line; std::getline(lines, line);)
        places += line.substr(0, line.find(": ")) + "\n";
    return places;
}

} // namespace

TEST(LookupHeaders, EveryMatchAgreesWithAnIndependentReader)
{
    const TempDirectory empty;
    const std::vector<ExpectedLookup> lookups = ExpectedLookups();
    ASSERT_EQ(lookups.size(), 200u);
    std::cout << "looking up " << lookups.size() / kLookupStep << " of " << lookups.size() << " names\n";
    for (size_t i = 0; i < lookups.size(); i += kLookupStep) {
        const ProgramRun run = RunProgram(
            {WREN_PROGRAM, "lookup", "--symbol", lookups[i].pattern, "--system-tags", HEADER_TAGS}, empty.Path());
        EXPECT_EQ(run.status, 0) << lookups[i].pattern << ": " << run.errors;
        EXPECT_EQ(WithoutItems(run.output), ExpectedOutput(lookups[i])) << lookups[i].pattern;
    }
}
