// Runs one scripted session in a copy of its folder and compares the answers with those expected. See README.md.
#include "Conversation.h"
#include "Executed.h"
#include "Pixels.h"
#include "RunnerLines.h"
#include "SessionFiles.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr const char* kBundle = "$BUNDLE"; // the plug-in's bundle
constexpr const char* kStart = "$START";   // what every session's first answer logs of the start
constexpr const char* kExecuted = "executed";
constexpr const char* kGuarded = "guarded";
constexpr const char* kInstalled = "/usr/bin/cplustags";
constexpr const char* kUsage = "usage: session_runner [--accept | --without-pixels] WREN FOLDER\n";

enum class Mode { Compare, CompareWithoutPixels, Accept };

// Always as long as this, wherever it is run: widths of windows depend on the lengths of paths.
class TemporaryDirectory {
public:
    TemporaryDirectory()
    {
        if (::mkdtemp(path.data()) == nullptr)
            throw std::runtime_error("cannot make " + path);
    }
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        fs::remove_all(path, ignored);
    }
    std::string path = "/tmp/wren-session-XXXXXX";
};

struct Outcome {
    std::vector<std::string> asked; // the lines that were for the editor
    int status = 0;
    std::vector<Json> answers;
    std::string errors;
    std::string executed;
};

// Where a session runs: the folder's copy, and beside it what the runner needs. All paths are of the same length
// wherever that is, and have nothing in them that a shell would want escaped.
struct Stage {
    fs::path scratch;
    fs::path directory = scratch / "dir";
    fs::path bundle = scratch / "Declaration.bundle";
};

std::string WithNames(const std::string& text, const Stage& stage)
{
    return Replaced(Replaced(text, stage.directory, kDir), stage.bundle, kBundle);
}

// A developer's own tags program stays out of it. A session that has tags made is given one whose tags are known.
void ChooseTagsProgram(const fs::path& folder, const Stage& stage)
{
    ::unsetenv("WREN_CTAGS");
    const fs::path program = stage.directory / "ctags";
    if (!fs::exists(stage.directory / kExecuted))
        return;
    if (!fs::exists(program))
        fs::copy(folder.parent_path() / "ctags", program);
    ::setenv("WREN_CTAGS", program.c_str(), 1);
}

std::vector<std::string> CommandLine(const std::string& wren, const Stage& stage)
{
    std::vector<std::string> words = {wren, "script", "--bundle", stage.bundle, "--home", stage.directory / "home"};
    if (fs::exists(stage.directory / "settings"))
        words.insert(words.end(), {"--settings", stage.directory / "settings"});
    if (fs::exists(stage.directory / kGuarded))
        words.push_back("--guarded");
    return words;
}

// Each answer comes before the next line is asked, or the next change made to a file.
Outcome Run(const std::string& wren, const Stage& stage)
{
    Outcome outcome;
    fs::create_directory_symlink(fs::path(wren).parent_path() / "Declaration.bundle", stage.bundle);
    Conversation conversation(CommandLine(wren, stage), stage.directory, stage.scratch / "errors");
    RunnerLines runner;
    for (const std::string& line : Lines(Read(stage.directory / "session.jsonl"))) {
        const std::string filled = Replaced(line, kDir, stage.directory);
        if (RunnerLines::IsOne(filled)) {
            runner.Carry(filled);
            continue;
        }
        outcome.asked.push_back(line);
        if (const std::optional<std::string> answer = conversation.Ask(filled))
            outcome.answers.push_back(Json::parse(WithNames(*answer, stage)));
    }
    const bool allReleased = runner.LetGo();
    for (const std::string& answer : conversation.Rest())
        outcome.answers.push_back(Json::parse(WithNames(answer, stage)));
    outcome.status = conversation.End();
    outcome.errors = Read(stage.scratch / "errors");
    outcome.executed = ExecutedCommands(WithNames(outcome.errors, stage));
    if (!allReleased)
        throw std::runtime_error("a file was still held when the session ended");
    return outcome;
}

// Puts kStart in place of what the start logs, which the session "start" alone spells out.
void FoldStart(const fs::path& folder, std::vector<Json>& answers)
{
    const fs::path start = folder.parent_path() / "start" / "expected.jsonl";
    if (folder.filename() == "start" || answers.empty() || !fs::exists(start))
        return;
    const Json whole = Json::parse(Lines(Read(start)).at(0)).at("log");
    Json& log = answers[0]["log"];
    if (log.size() < whole.size() || !std::equal(whole.begin(), whole.end(), log.begin()))
        return;
    log.erase(log.begin(), log.begin() + static_cast<long>(whole.size()));
    log.insert(log.begin(), kStart);
}

int ExpectedStatus(const std::vector<Json>& answers)
{
    for (const Json& answer : answers)
        if (answer.at("ok") != true)
            return 1;
    return 0;
}

// As values: the order of an object's members does not count.
bool Same(const Json& expected, const Json& answer)
{
    return nlohmann::json(expected) == nlohmann::json(answer);
}

std::vector<Json> ExpectedAnswers(const fs::path& folder, Mode mode)
{
    std::vector<Json> expected;
    for (const std::string& line : Lines(Read(folder / "expected.jsonl"))) {
        expected.push_back(Json::parse(line));
        if (mode == Mode::CompareWithoutPixels)
            LeaveOutPixels(expected.back());
    }
    return expected;
}

std::string LineOr(const std::vector<std::string>& lines, size_t index)
{
    return index < lines.size() ? lines[index] : "(nothing)";
}

// What is wrong with the outcome; "" when it is as expected.
std::string Differences(const std::vector<Json>& expected, const Outcome& outcome)
{
    std::ostringstream text;
    for (size_t i = 0; i < std::max(expected.size(), outcome.answers.size()); ++i) {
        const Json answer = i < outcome.answers.size() ? outcome.answers[i] : Json();
        if (i < expected.size() && Same(expected[i], answer))
            continue;
        text << "line " << i + 1 << ": " << LineOr(outcome.asked, i) << "\n  expected "
             << (i < expected.size() ? expected[i].dump() : "(nothing)") << "\n  answered " << answer.dump() << "\n";
        if (i < expected.size())
            text << "  changes  " << Json::diff(expected[i], answer).dump() << "\n";
    }
    if (outcome.status != ExpectedStatus(outcome.answers))
        text << "exit status " << outcome.status << ", not " << ExpectedStatus(outcome.answers) << "\n";
    return text.str();
}

// A file "NAME.expected" says what the file NAME holds when the session has ended; an absent NAME holds nothing.
std::string FileDifferences(const fs::path& directory)
{
    std::string text;
    for (const fs::path& expected : FilesIn(directory)) {
        if (expected.extension() != ".expected")
            continue;
        fs::path file = expected;
        file.replace_extension();
        const std::string content = fs::exists(file) ? Replaced(Read(file), directory, kDir) : "";
        if (content != Replaced(Read(expected), directory, kDir))
            text += file.filename().string() + " holds:\n" + content + "\n";
    }
    return text;
}

// A session without a file that names commands is one that runs none.
std::string ExecutedDifferences(const fs::path& folder, const std::string& executed)
{
    const std::string expected = fs::exists(folder / kExecuted) ? Read(folder / kExecuted) : "";
    return executed == expected ? "" : "executed\n" + executed + "instead of\n" + expected;
}

void Accept(const fs::path& folder, const Outcome& outcome)
{
    std::string text;
    for (const Json& answer : outcome.answers)
        text += answer.dump() + "\n";
    Write(folder / "expected.jsonl", text);
    if (!outcome.executed.empty())
        Write(folder / kExecuted, outcome.executed);
}

Mode ModeNamed(const std::string& option)
{
    if (option == "--accept")
        return Mode::Accept;
    return option == "--without-pixels" ? Mode::CompareWithoutPixels : Mode::Compare;
}

int RunSession(const std::string& wren, const fs::path& folder, Mode mode)
{
    const TemporaryDirectory scratch;
    const Stage stage{scratch.path};
    Prepare(folder, stage.directory);
    ChooseTagsProgram(folder, stage);
    Outcome outcome = Run(wren, stage);
    FoldStart(folder, outcome.answers);
    if (mode == Mode::Accept) {
        Accept(folder, outcome);
        std::cerr << outcome.errors;
        return 0;
    }
    if (mode == Mode::CompareWithoutPixels)
        std::ranges::for_each(outcome.answers, LeaveOutPixels);
    const std::string differences = Differences(ExpectedAnswers(folder, mode), outcome) +
                                    ExecutedDifferences(folder, outcome.executed) + FileDifferences(stage.directory);
    if (differences.empty())
        return 0;
    std::cout << folder.filename().string() << "\n" << differences << "standard error:\n" << outcome.errors;
    if (fs::exists(kInstalled))
        std::cout << kInstalled << " is installed here; the sessions show a user for whom it is not\n";
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> words(argv + 1, argv + argc);
    const Mode mode = ModeNamed(words.empty() ? "" : words[0]);
    if (words.size() != (mode == Mode::Compare ? 2u : 3u)) {
        std::cerr << kUsage;
        return 2;
    }
    try {
        const fs::path folder = fs::canonical(words.back());
        return RunSession(fs::canonical(words[words.size() - 2]), folder, mode);
    } catch (const std::exception& error) {
        std::cerr << "session_runner: " << error.what() << "\n";
        return 2;
    }
}
