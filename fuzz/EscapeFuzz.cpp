// A real shell reads escaped texts. Each path comes back as one word, nothing runs, and no file is made on the way.
// Escaped parentheses mean the same to the shell as letters in their places.
#include "fuzz/Lines.h"
#include "fuzz/Require.h"
#include "tests/support/TempDirectory.h"
#include "vetch/support/ShellEscape.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr size_t kMostTexts = 40;   // in one shell
constexpr size_t kMostCommands = 5; // each in its own shell

// A shell that finds no program at all, in a directory with files for patterns to match.
class Shell {
public:
    Shell()
    {
        for (const char* file : {"place/a", "place/b", "place/aa", "place/-n", "place/~"})
            files.Write(file, "");
    }

    // Returns the shell's output for the words, each passed to "printf '%s\0'".
    std::string SayWords(const std::vector<std::string>& words)
    {
        std::string script = "cd \"$PLACE\"";
        for (const std::string& word : words)
            script += "\nprintf '%s\\0' " + word;
        return Run({"sh", "-c", script});
    }

    // The same for texts that need not be words; includes error messages.
    std::string SayTexts(const std::vector<std::string>& texts)
    {
        std::vector<std::string> words = {
            "sh", "-c", "cd \"$PLACE\"; for text do (eval \"printf '%s\\0' $text\") 2>&1; done", "sh"};
        words.insert(words.end(), texts.begin(), texts.end());
        return Run(words);
    }

private:
    std::string Run(std::vector<std::string> words)
    {
        const std::string output = files / "output";
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, 1, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
        std::vector<char*> arguments;
        for (std::string& word : words)
            arguments.push_back(word.data());
        arguments.push_back(nullptr);
        std::string place = "PLACE=" + files / "place";
        char path[] = "PATH=/nowhere", home[] = "HOME=/home/user", letter[] = "a=expanded";
        char* environment[] = {path, home, letter, place.data(), nullptr};
        pid_t process = 0;
        const int problem = ::posix_spawn(&process, "/bin/sh", &actions, nullptr, arguments.data(), environment);
        posix_spawn_file_actions_destroy(&actions);
        Require(problem == 0, "the shell can be started");
        int status = 0;
        while (::waitpid(process, &status, 0) < 0)
            Require(errno == EINTR, "the shell can be waited for"); // the fuzzing library has an alarm set
        Require(WIFEXITED(status), "the shell ends by itself");
        Require(FileCount() == kFiles, "the shell makes and removes no file");
        return ReadFile(output);
    }

    static constexpr long kFiles = 5;

    long FileCount() const
    {
        using Files = std::filesystem::directory_iterator;
        return std::distance(Files(files / "place"), Files());
    }

    TempDirectory files;
};

// Returns the shell's expansion of a path: a leading "~" becomes the home directory.
std::string AsTheShellHasIt(const std::string& path)
{
    return path.starts_with("~/") ? "/home/user" + path.substr(1) : path;
}

void TryPaths(Shell& shell, const std::vector<std::string>& paths)
{
    std::vector<std::string> escaped;
    std::string expected;
    for (const std::string& path : paths) {
        escaped.push_back(EscapedPath(path));
        Require(DeEscaped(escaped.back()) == path, "an escaped path can be had back");
        expected += AsTheShellHasIt(path) + '\0';
    }
    Require(shell.SayWords(escaped) == expected, "an escaped path is one word to the shell");
}

// Only characters that cannot make a text run anything.
std::string Harmless(const std::string& text)
{
    constexpr char kHarmless[] = "ab()\\'\"# \n\t()";
    std::string harmless;
    for (const char character : text)
        harmless += std::strchr(kHarmless, character) != nullptr ? character : kHarmless[character & 7];
    return harmless;
}

std::string WithLetters(std::string text)
{
    std::replace(text.begin(), text.end(), '(', 'L');
    std::replace(text.begin(), text.end(), ')', 'R');
    return text;
}

void TryParentheses(Shell& shell, const std::vector<std::string>& texts)
{
    std::vector<std::string> escaped, lettered;
    for (const std::string& text : texts) {
        if (lettered.size() == kMostCommands)
            break;
        lettered.push_back(WithLetters(Harmless(text)));
        escaped.push_back(Harmless(text));
        ShellEscapeString(escaped.back());
    }
    Require(WithLetters(shell.SayTexts(escaped)) == shell.SayTexts(lettered), "escaped parentheses are as letters");
}

// For any text: only backslashes before parentheses are added, and a second escape adds none.
void TryAnyCommand(const std::string& text)
{
    std::string once = text;
    ShellEscapeString(once);
    std::string twice = once;
    ShellEscapeString(twice);
    Require(once == twice, "escaping again changes nothing");
    size_t at = 0;
    for (const char character : text) {
        if (once[at] != character)
            Require(once[at++] == '\\' && (character == '(' || character == ')'), "only backslashes are added");
        Require(once[at++] == character, "the text stays");
    }
    Require(at == once.size(), "nothing is added behind it");
}

} // namespace

// Texts, each with a NUL after it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Shell shell;
    std::vector<std::string> texts = Split(data, size, '\0');
    std::erase(texts, "");
    if (texts.empty() || texts.size() > kMostTexts)
        return 0;
    for (const std::string& text : texts) {
        TryAnyCommand(text);
        DeEscaped(text);
    }
    TryPaths(shell, texts);
    TryParentheses(shell, texts);
    return 0;
}
