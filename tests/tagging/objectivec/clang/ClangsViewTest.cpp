// Compares our tags with the Objective-C declarations that clang finds: none may be missing or invented, and all lines
// must be right.
//
// Clang reads one branch of each condition, but we read all, so tags on lines that clang skipped cannot be compared.
// Neither can declarations made by macros, which tools/make-objective-c-declarations leaves out.
#include "tagging/objectivec/ObjectiveC.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The place and kind of a declaration: "12 m first:second:".
using Declaration = std::string;

struct ClangsView {
    // With the classes that they belong to. There are several if one branch of a condition begins a protocol, the other
    // a class, and the rest belongs to either: our tag is for the first of the two.
    std::map<Declaration, std::set<std::string>> declarations;
    std::vector<std::pair<unsigned, unsigned>> liveLines;

    bool IsLive(unsigned line) const
    {
        return std::any_of(liveLines.begin(), liveLines.end(),
                           [&](const auto& range) { return range.first <= line && line <= range.second; });
    }
};

using ViewOfFiles = std::map<std::string, ClangsView>;

std::vector<std::string> Fields(const std::string& line)
{
    std::vector<std::string> fields(1);
    for (const char c : line) {
        if (c == '\t')
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

template <class OnFields>
void ForEachLine(const std::string& name, OnFields onFields)
{
    std::ifstream lines(std::string(CLANGS_VIEW) + "/" + name);
    ASSERT_TRUE(lines) << name;
    for (std::string line; std::getline(lines, line);)
        onFields(Fields(line));
}

ViewOfFiles ReadView()
{
    ViewOfFiles view;
    ForEachLine("declarations", [&](const std::vector<std::string>& f) {
        view[f.at(0)].declarations[f.at(1) + ' ' + f.at(2) + ' ' + f.at(3)].insert(f.at(4));
    });
    ForEachLine("live-lines", [&](const std::vector<std::string>& f) {
        std::istringstream ranges(f.at(1));
        unsigned first = 0;
        unsigned last = 0;
        for (char mark = 0; ranges >> first >> mark >> last; ranges >> mark)
            view[f.at(0)].liveLines.emplace_back(first, last);
    });
    return view;
}

const ViewOfFiles& View()
{
    static const ViewOfFiles view = ReadView();
    return view;
}

std::string Contents(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::vector<std::string> FilesIn(const std::string& directory, std::initializer_list<std::string> extensions)
{
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(directory))
        if (std::count(extensions.begin(), extensions.end(), entry.path().extension()) > 0)
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

struct Counts {
    size_t same = 0;
    size_t skipped = 0;
};

void Compare(const std::string& file, Counts& counts)
{
    const ClangsView& clangs = View().contains(file) ? View().at(file) : ClangsView();
    const tagging::ObjectiveCSource source = tagging::ReadObjectiveC(Contents(file), {});
    std::set<Declaration> ours;
    for (const tagsfile::Tag& tag : source.tags.tags) {
        const Declaration declaration = std::to_string(tag.line) + ' ' + tag.kind + ' ' + std::string(tag.name);
        EXPECT_TRUE(ours.insert(declaration).second) << "twice: " << file << ": " << declaration;
        const auto same = clangs.declarations.find(declaration);
        if (same == clangs.declarations.end()) {
            EXPECT_FALSE(clangs.IsLive(tag.line)) << "invented: " << file << ": " << declaration;
            ++counts.skipped;
            continue;
        }
        const std::string scope(tag.scope.substr(std::min(tag.scope.size(), std::string("class:").size())));
        EXPECT_TRUE(same->second.contains(scope))
            << "another class: " << file << ": " << declaration << " of " << scope;
        ++counts.same;
    }
    for (const auto& [declaration, classes] : clangs.declarations)
        EXPECT_TRUE(ours.contains(declaration)) << "missing: " << file << ": " << declaration;
}

Counts CompareAll(const std::vector<std::string>& files)
{
    Counts counts;
    for (const std::string& file : files)
        Compare(file, counts);
    std::cout << files.size() << " files, " << counts.same << " declarations are the same, " << counts.skipped
              << " cannot be compared\n";
    return counts;
}

} // namespace

TEST(ComparisonWithClang, AgreesOnAllGNUstepHeaders)
{
    const std::vector<std::string> headers = FilesIn("/usr/include/GNUstep", {".h"});
    ASSERT_GT(headers.size(), 500u);
    const Counts counts = CompareAll(headers);
    EXPECT_GT(counts.same, 10000u);
    EXPECT_LT(counts.skipped, counts.same / 100) << "clang skipped too much for a comparison";
}

TEST(ComparisonWithClang, LeavesOutTwoHeadersThatNeedTheirMacros)
{
    std::vector<std::string> unseen;
    ForEachLine("unseen", [&](const std::vector<std::string>& f) { unseen.push_back(f.at(0)); });
    EXPECT_THAT(unseen, testing::ElementsAre("/usr/include/GNUstep/GNUstepBase/GSIArray.h",
                                             "/usr/include/GNUstep/GNUstepBase/GSIMap.h"));
}

TEST(ComparisonWithClang, AgreesOnSamples)
{
    const std::vector<std::string> samples = FilesIn(TEST_DATA "/objective-c", {".m", ".mm"});
    ASSERT_GT(samples.size(), 4u);
    const Counts counts = CompareAll(samples);
    EXPECT_GT(counts.same, 100u);
}
