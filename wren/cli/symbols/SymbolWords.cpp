#include "wren/cli/symbols/SymbolWords.h"

#include "symbols/Index.h"
#include "wren/cli/CommandSupport.h"
#include "wren/symbols/IndexRoot.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <system_error>
#include <utility>

namespace wren {

void AddTreeOptions(CLI::App& command, SymbolWords& words)
{
    command.add_option("--in", words.directory, "Use the index of this directory's project")->type_name("DIR");
    command.add_flag("--fresh", words.index.waits, "Wait until all changed files are found");
}

void AddNoSystemOption(CLI::App& command, SymbolWords& words)
{
    command.add_flag_callback(
        "--no-system", [&words] { words.index.withSystem = false; }, "Leave out the headers of the system");
}

void AddAnswerOptions(CLI::App& command, SymbolWords& words)
{
    command.add_flag("--json", words.json, "Print JSON, an object a line");
    command
        .add_option("--limit", words.limit, "Print at most that many (default: " + std::to_string(words.limit) + ")")
        ->check(CLI::Range(size_t{1}, size_t{1'000'000}));
}

// Of a tree without a project, a file's own directory is indexed, which is less than the user may expect.
base::Result<CurrentIndex*> CurrentIndexes::ForFile(const std::string& path)
{
    if (!words.directory.empty())
        return ForDirectory();
    const base::Result<std::string> root = RootForFile(path);
    std::error_code unknown;
    const std::string current = std::filesystem::current_path(unknown).string() + "/";
    if (root && root->starts_with(current) && !symbols::FindRoot(path) && !HasIndex(*root))
        Complain("no project is known around " + *root +
                 ", so only that directory is indexed; --in DIR indexes all of " + "another one");
    return ForRoot(root);
}

base::Result<CurrentIndex*> CurrentIndexes::ForDirectory()
{
    return ForRoot(RootForDirectory(words.directory.empty() ? "." : words.directory));
}

base::Result<CurrentIndex*> CurrentIndexes::ForRoot(const base::Result<std::string>& root)
{
    if (!root)
        return root.Failure();
    if (const auto known = indexes.find(*root); known != indexes.end())
        return known->second.get();
    if (!settings) {
        base::Result<tagging::Settings> chosen = symbols::IndexSettings();
        if (!chosen)
            return chosen.Failure();
        settings = *std::move(chosen);
    }
    auto index = std::make_unique<CurrentIndex>(*root, words.index, *settings, interruption);
    if (const base::Result<void> prepared = index->Prepare(); !prepared)
        return prepared.Failure();
    if (const std::string why = index->WhyStale(); !why.empty())
        Complain(why);
    return indexes.emplace(*root, std::move(index)).first->second.get();
}

} // namespace wren
