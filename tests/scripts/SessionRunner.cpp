// Runs one scripted session in a copy of its folder and compares the answers with those expected. See README.md.
#include "Executed.h"

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr const char* kDir = "$DIR";       // the copy of the folder
constexpr const char* kBundle = "$BUNDLE"; // the plug-in's bundle
constexpr const char* kStart = "$START";   // what every session's first answer logs of the start
constexpr const char* kExecuted = "executed";
constexpr const char* kInstalled = "/usr/bin/cplustags";
constexpr const char* kUsage = "usage: session_runner [--accept] WREN FOLDER\n";
constexpr time_t kFileTime = 1'000'000'000;
constexpr time_t kApart = 1'000; // seconds that "older" and "newer" files are away from that

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

std::string Read(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read " + file.string());
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

void Write(const fs::path& file, const std::string& text)
{
    std::ofstream stream(file, std::ios::binary);
    if (!(stream << text) || !stream.flush())
        throw std::runtime_error("cannot write " + file.string());
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::string Replaced(std::string text, const std::string& what, const std::string& with)
{
    for (size_t at = 0; (at = text.find(what, at)) != std::string::npos; at += with.size())
        text.replace(at, what.size(), with);
    return text;
}

std::vector<fs::path> FilesIn(const fs::path& directory)
{
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(directory))
        if (entry.is_regular_file() && !entry.is_symlink())
            files.push_back(entry.path());
    return files;
}

// Writes each file "name.in" as "name", with the copy's own path in it.
void FillIn(const fs::path& directory)
{
    for (const fs::path& file : FilesIn(directory)) {
        if (file.extension() != ".in")
            continue;
        fs::path filled = file;
        Write(filled.replace_extension(), Replaced(Read(file), kDir, directory));
        fs::remove(file);
    }
}

void SetTime(const fs::path& file, time_t seconds)
{
    const timespec times[] = {{seconds, 0}, {seconds, 0}};
    if (::utimensat(AT_FDCWD, file.c_str(), times, AT_SYMLINK_NOFOLLOW) != 0)
        throw std::runtime_error("cannot set the time of " + file.string());
}

// All files are of one age, but for those that the file "mtimes" names: "older PATH" or "newer PATH", a line each.
void SetTimes(const fs::path& directory)
{
    for (const fs::path& file : FilesIn(directory))
        SetTime(file, kFileTime);
    if (!fs::exists(directory / "mtimes"))
        return;
    for (const std::string& line : Lines(Read(directory / "mtimes"))) {
        const std::string age = line.substr(0, line.find(' '));
        if (age != "older" && age != "newer")
            throw std::runtime_error("mtimes: neither older nor newer: " + line);
        SetTime(directory / line.substr(6), age == "older" ? kFileTime - kApart : kFileTime + kApart);
    }
}

void Prepare(const fs::path& folder, const fs::path& directory)
{
    fs::copy(folder, directory, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
    if (fs::exists(folder / kExecuted) && !fs::exists(directory / "ctags"))
        fs::copy(folder.parent_path() / "ctags", directory / "ctags");
    fs::create_directories(directory / "home");
    FillIn(directory);
    SetTimes(directory);
}

std::string Quoted(const std::string& word)
{
    return "'" + Replaced(word, "'", "'\\''") + "'";
}

struct Outcome {
    int status;
    std::vector<Json> answers;
    std::string errors;
    std::string executed;
};

// Where a session runs: the folder's copy, and beside it what the runner needs. All paths are of the same length wherever
// that is, and have nothing in them that a shell would want escaped.
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
std::string Environment(const Stage& stage)
{
    const bool makesTags = fs::exists(stage.directory / kExecuted);
    return "env -u WREN_CTAGS " + (makesTags ? Quoted("WREN_CTAGS=" + (stage.directory / "ctags").string()) + " " : "");
}

std::string Command(const std::string& wren, const Stage& stage)
{
    const fs::path settings = stage.directory / "settings";
    return "cd " + Quoted(stage.directory) + " && " + Environment(stage) + Quoted(wren) + " script --bundle " +
           Quoted(stage.bundle) + " --home " + Quoted(stage.directory / "home") +
           (fs::exists(settings) ? " --settings " + Quoted(settings) : "") + " < " + Quoted(stage.scratch / "session") +
           " > " + Quoted(stage.scratch / "answers") + " 2> " + Quoted(stage.scratch / "errors");
}

Outcome Run(const std::string& wren, const Stage& stage)
{
    Write(stage.scratch / "session", Replaced(Read(stage.directory / "session.jsonl"), kDir, stage.directory));
    fs::create_directory_symlink(fs::path(wren).parent_path() / "Declaration.bundle", stage.bundle);
    const int status = std::system(Command(wren, stage).c_str());
    const std::string errors = Read(stage.scratch / "errors");
    Outcome outcome{
        WIFEXITED(status) ? WEXITSTATUS(status) : -1, {}, errors, ExecutedCommands(WithNames(errors, stage))};
    for (const std::string& line : Lines(Read(stage.scratch / "answers")))
        outcome.answers.push_back(Json::parse(WithNames(line, stage)));
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
bool Same(const std::string& expected, const Json& answer)
{
    return nlohmann::json::parse(expected) == nlohmann::json::parse(answer.dump());
}

std::string LineOr(const std::vector<std::string>& lines, size_t index)
{
    return index < lines.size() ? lines[index] : "(nothing)";
}

// What is wrong with the outcome; "" when it is as expected.
std::string Differences(const fs::path& folder, const Outcome& outcome)
{
    const std::vector<std::string> session = Lines(Read(folder / "session.jsonl"));
    const std::vector<std::string> expected = Lines(Read(folder / "expected.jsonl"));
    std::ostringstream text;
    for (size_t i = 0; i < std::max(expected.size(), outcome.answers.size()); ++i) {
        const Json answer = i < outcome.answers.size() ? outcome.answers[i] : Json();
        if (i < expected.size() && Same(expected[i], answer))
            continue;
        text << "line " << i + 1 << ": " << LineOr(session, i) << "\n  expected " << LineOr(expected, i)
             << "\n  answered " << answer.dump() << "\n";
        if (i < expected.size())
            text << "  changes  " << Json::diff(Json::parse(expected[i]), answer).dump() << "\n";
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

int RunSession(const std::string& wren, const fs::path& folder, bool accept)
{
    const TemporaryDirectory scratch;
    const Stage stage{scratch.path};
    Prepare(folder, stage.directory);
    Outcome outcome = Run(wren, stage);
    FoldStart(folder, outcome.answers);
    if (accept) {
        Accept(folder, outcome);
        std::cerr << outcome.errors;
        return 0;
    }
    const std::string differences =
        Differences(folder, outcome) + ExecutedDifferences(folder, outcome.executed) + FileDifferences(stage.directory);
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
    const bool accept = !words.empty() && words[0] == "--accept";
    if (words.size() != (accept ? 3u : 2u)) {
        std::cerr << kUsage;
        return 2;
    }
    try {
        const fs::path folder = fs::canonical(words.back());
        return RunSession(fs::canonical(words[words.size() - 2]), folder, accept);
    } catch (const std::exception& error) {
        std::cerr << "session_runner: " << error.what() << "\n";
        return 2;
    }
}
