#include "cplustags/Options.h"

#include "base/EnvironmentNumber.h"
#include "base/ExitStatus.h"
#include "base/Paths.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <thread>

namespace cplustags {

namespace {

constexpr unsigned kMostJobs = 64;
constexpr unsigned kLongestTimeLimit = 24 * 60 * 60;

constexpr const char* kFooter =
    R"(Sources are named on the command line and in the lines of the list for -L. Directories,
devices and the like are skipped; a file that cannot be read is reported, and the others are
tagged. The tags file names files below its directory relative to it. The old tags file stays
unchanged until the new one is complete. Nothing is written through a symbolic link in its
place without --follow-links.

Environment:
  CPLUSTAGS_CTAGS       the Universal Ctags to run (default: ctags-universal, else ctags)
  CPLUSTAGS_JOBS        ctags processes at a time, 1 to 64 (default: one per core); the result is always the same
  CPLUSTAGS_TIME_LIMIT  seconds that ctags may take for one file, which is then left out (default: 20)

Exit status:
  0  the tags file is in place, or there was nothing to do
  1  the tags file could not be made, and an old one is unchanged
  2  wrong usage

Examples:
  find . -name "*.h" -o -name "*.cpp" | cplustags --c-kinds=+p --excmd=number -f tags -L -
  cplustags --append=yes -f tags main.cpp
  cplustags --totals -f - *.c | less)";

struct WrongUsage : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Filled in by CLI11.
struct Words {
    Options options;
    std::string kinds;
    std::string positions;
    std::string append;
};

// Options with "=" are flags for CLI11, since only flags leave the next word of the command line to the file names.
// Their help shows the value that they take.
class HelpWithValues : public CLI::Formatter {
    std::string make_option_name(const CLI::Option* option, bool positional) const override
    {
        const std::string name = CLI::Formatter::make_option_name(option, positional);
        return option->get_option_text()[0] == '=' ? name + option->get_option_text() : name;
    }
    std::string make_option_opts(const CLI::Option* option) const override
    {
        return option->get_option_text()[0] == '=' ? "" : CLI::Formatter::make_option_opts(option);
    }
    std::string make_usage(const CLI::App*, std::string) const override
    {
        return "\nUsage: cplustags [OPTIONS] FILES...\n       cplustags [OPTIONS] -L LIST [FILES...]\n";
    }
};

// CLI11's value of a flag without a value.
constexpr const char* kNoValue = "true";

CLI::Validator OneOf(const std::vector<std::string>& values)
{
    const auto refusal = [values](const std::string& value) -> std::string {
        if (std::find(values.begin(), values.end(), value) != values.end())
            return "";
        const std::string known = "only '" + CLI::detail::join(values, "' and '") + "' can be given";
        return value == kNoValue ? known : known + ", not '" + value + "'";
    };
    return CLI::Validator(refusal, "");
}

CLI::Validator AnyValue()
{
    return CLI::Validator([](const std::string& value) { return value == kNoValue ? "a value is missing" : ""; }, "");
}

CLI::Validator NoValue()
{
    return CLI::Validator([](const std::string& value) { return value == kNoValue ? "" : "takes no value"; }, "");
}

void Describe(CLI::App& app, Words& words)
{
    Options& options = words.options;
    app.formatter(std::make_shared<HelpWithValues>());
    app.set_help_flag("--help", "Print this help and exit");
    app.set_version_flag("--version", "cplustags " CPLUSTAGS_VERSION, "Print the version and exit");
    app.footer(kFooter);
    app.add_option("files", options.files, "Sources to tag")->option_text(" ");
    app.add_option("-f", options.target, "The tags file to write, - for standard output (default: tags)")
        ->option_text("FILE")
        ->take_last();
    app.add_option("-L", options.list, "Read names of sources from this file, one per line; - for standard input")
        ->option_text("LIST")
        ->take_last();
    app.add_option("-I", options.ignored, "Macros to ignore, with commas or blanks between them, as for ctags")
        ->option_text("NAMES")
        ->take_last();
    app.add_flag("--append", words.append, "Keep what the tags file has of other sources that are still there")
        ->option_text("=yes")
        ->check(OneOf({"yes", "no"}))
        ->take_last();
    app.add_flag("--c-kinds", words.kinds, "Tag prototypes too, of C and C++")
        ->option_text("=+p")
        ->check(OneOf({"+p"}))
        ->take_last();
    app.add_flag("--excmd", words.positions, "Positions are line numbers, which they always are")
        ->option_text("=number")
        ->check(OneOf({"number"}))
        ->take_last();
    app.add_flag("--language-force", options.language,
                 "Read all sources as this language (default: their names decide)")
        ->option_text("=NAME")
        ->check(AnyValue())
        ->take_last();
    app.add_flag("--follow-links", options.followLinks,
                 "Write the file that a link at -f points to (default: refuse links)")
        ->check(NoValue());
    app.add_flag("--totals", options.totals, "Say at the end how much was done")->check(NoValue());
}

bool StartsWith(const std::string& word, const char* start)
{
    return word.rfind(start, 0) == 0;
}

// Whether the option takes the word after it.
bool TakesWord(const std::string& word)
{
    return word == "-f" || word == "-L" || word == "-I";
}

// Returns the words for CLI11, which wants the last one first.
//
// An empty setting of the user's leaves -I without a value. The next word is then an option, which must not be taken
// for the name of a macro.
std::vector<std::string> WordsToParse(int argc, const char* const* argv)
{
    const std::vector<std::string> given(argv + std::min(argc, 1), argv + argc);
    std::vector<std::string> words;
    for (size_t i = 0; i < given.size(); ++i) {
        const std::string& word = given[i];
        const bool last = i + 1 == given.size();
        if (word == "--") {
            words.insert(words.end(), given.begin() + static_cast<std::ptrdiff_t>(i), given.end());
            break;
        }
        if (word == "-I" && !last && StartsWith(given[i + 1], "--"))
            continue;
        if (TakesWord(word) && last)
            throw WrongUsage(word + ": a value is missing");
        if (word.length() > 2 && TakesWord(word.substr(0, 2)))
            throw WrongUsage(word + ": put a blank after " + word.substr(0, 2));
        words.push_back(word == "--append" ? "--append=yes" : word);
        if (TakesWord(word))
            words.push_back(given[++i]);
    }
    std::reverse(words.begin(), words.end());
    return words;
}

unsigned NumberOf(const base::Result<unsigned>& setting)
{
    if (!setting)
        throw WrongUsage(setting.Failure().Message());
    return *setting;
}

void ReadEnvironment(Options& options)
{
    const char* ctags = std::getenv("CPLUSTAGS_CTAGS");
    options.ctags = ctags != nullptr ? ctags : "";
    const unsigned cores = std::clamp(std::thread::hardware_concurrency(), 1u, kMostJobs);
    options.jobs = NumberOf(base::NumberFrom("CPLUSTAGS_JOBS", kMostJobs, cores));
    options.timeLimit = NumberOf(base::NumberFrom("CPLUSTAGS_TIME_LIMIT", kLongestTimeLimit, options.timeLimit));
}

Options Checked(const Words& words)
{
    Options options = words.options;
    options.append = words.append == "yes";
    options.prototypes = !words.kinds.empty();
    if (options.target.empty())
        throw WrongUsage("-f: the name of the tags file is empty");
    if (options.files.empty() && options.list.empty())
        throw WrongUsage("no sources: name files, or a list of them with -L");
    ReadEnvironment(options);
    return options;
}

} // namespace

Options ReadOptions(int argc, const char* const* argv, int* status)
{
    CLI::App app("Makes tags files for looking symbols up; Universal Ctags does the parsing.", "cplustags");
    Words words;
    Describe(app, words);
    *status = -1;
    try {
        app.parse(WordsToParse(argc, argv));
        return Checked(words);
    } catch (const CLI::Success& success) {
        *status = app.exit(success);
    } catch (const std::runtime_error& error) { // CLI11's errors, and our own
        std::cerr << "cplustags: " << base::ShownLines(error.what())
                  << "\nRun cplustags --help for what can be given.\n";
        *status = base::exit_status::kUnusable;
    }
    return {};
}

} // namespace cplustags
