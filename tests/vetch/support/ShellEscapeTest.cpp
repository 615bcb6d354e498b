#include "vetch/support/ShellEscape.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

// Everything that 'commands' writes when a real shell runs it.
std::string OutputOfShell(const std::string& commands)
{
    FILE* pipe = popen(commands.c_str(), "r");
    if (pipe == nullptr)
        return "no shell";
    std::string output;
    char buffer[4096];
    for (size_t length; (length = std::fread(buffer, 1, sizeof buffer, pipe)) > 0;)
        output.append(buffer, length);
    const int status = pclose(pipe);
    return status == 0 ? output : output + "[the shell failed]";
}

const std::vector<std::string> kAwkwardPaths = {
    "",
    "plain/path-1.0+x,y:z@w%=_.h",
    "two  blanks",
    " a blank at both ends ",
    "a\nline break",
    "\n",
    "\n\n at the beginning and at the end \n",
    "'\n'",
    "\\\n",
    "'single' \"double\" `back`",
    "it's",
    "$(touch /nowhere) $HOME ${x} `id`",
    "back\\slash \\' \\\\ at the end\\",
    "* ? [a-z] {a,b} !x",
    "(a) <b> >c |d &e ;f #g",
    "# no comment",
    "~",
    "~root",
    "a/~/b",
    "~~/x",
    "PATH=~/x",
    "-n",
    "tab\tcarriage return\rbell\a delete\x7f",
    "caf\xc3\xa9 \xe2\x80\xa8",
    "no UTF-8: \xff\xfe\x80 \xc3(",
};

std::string EveryByteButNul()
{
    std::string bytes;
    for (int byte = 1; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    return bytes;
}

} // namespace

TEST(ReplaceAll, Cases)
{
    const struct {
        const char* why;
        const char* text;
        const char* pattern;
        const char* with;
        const char* all;
        const char* first;
    } kCases[] = {
        {"every occurrence, or the first", "a-b-c", "-", "+", "a+b+c", "a+b-c"},
        {"a shorter replacement", "aXXbXX", "XX", "", "ab", "abXX"},
        {"a longer replacement", "a-b", "-", "===", "a===b", "a===b"},
        {"a replacement holding the pattern is not searched again", "aa", "a", "aa", "aaaa", "aaa"},
        {"nor does it make a pattern with what follows", "aab", "ab", "a", "aa", "aa"},
        {"occurrences do not overlap", "aaa", "aa", "b", "ba", "ba"},
        {"no occurrence", "abc", "x", "y", "abc", "abc"},
        {"an empty pattern", "abc", "", "y", "abc", "abc"},
        {"an empty text", "", "x", "y", "", ""},
        {"the whole text", "~/", "~/", "/home/u/", "/home/u/", "/home/u/"},
    };
    for (const auto& c : kCases) {
        std::string all = c.text;
        ReplaceAll(all, c.pattern, c.with);
        EXPECT_EQ(all, c.all) << c.why;
        std::string first = c.text;
        ReplaceFirst(first, c.pattern, c.with);
        EXPECT_EQ(first, c.first) << c.why;
    }
}

TEST(EscapedPath, Cases)
{
    const struct {
        const char* why;
        const char* path;
        const char* escaped;
    } kCases[] = {
        {"nothing to escape", "/usr/include/a_b-1.0.h", "/usr/include/a_b-1.0.h"},
        {"what a shell reads as it stands", "+,:@%=", "+,:@%="},
        {"a blank", "a b", "a\\ b"},
        {"both quotes", "'\"", "\\'\\\""},
        {"a backslash", "\\", "\\\\"},
        {"a pattern", "/usr/include/gcc/darwin*", "/usr/include/gcc/darwin\\*"},
        {"a variable", "$(x)", "\\$\\(x\\)"},
        {"a line break, which a backslash would remove", "a\nb", "a'\n'b"},
        {"the home directory is left to the shell", "~/a b", "~/a\\ b"},
        {"a file called like a home directory", "~", "\\~"},
        {"a user's home directory is not asked for", "~u/a", "\\~u/a"},
        {"a tilde further on", "a/~/b", "a/\\~/b"},
        {"beyond ASCII", "\xc3\xa9\x80\xff", "\xc3\xa9\x80\xff"},
        {"control characters", "\t\x7f", "\\\t\\\x7f"},
        {"nothing, and no quotes around it", "", ""},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(EscapedPath(c.path), c.escaped) << c.why;
}

TEST(EscapedPath, ARealShellReadsItBack)
{
    std::vector<std::string> paths = kAwkwardPaths;
    paths.push_back(EveryByteButNul());
    for (const char byte : EveryByteButNul()) {
        paths.push_back(std::string(1, byte));
        paths.push_back(std::string("a") + byte + "b");
    }
    std::string command = "printf '%s\\0'";
    std::string expected;
    for (const std::string& path : paths) {
        if (path.empty())
            continue; // which makes no word
        command += " " + EscapedPath(path);
        expected += path + '\0';
    }
    EXPECT_EQ(OutputOfShell(command), expected);
}

TEST(EscapedPath, LeavesTheHomeDirectoryToTheShell)
{
    const std::string home = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
    if (home.empty())
        GTEST_SKIP() << "there is no home directory to expand";
    EXPECT_EQ(OutputOfShell("printf %s " + EscapedPath("~/Library/a b")), home + "/Library/a b");
}

TEST(DeEscaped, UndoesEscapedPath)
{
    for (const std::string& path : kAwkwardPaths)
        EXPECT_EQ(DeEscaped(EscapedPath(path)), path);
    for (int first = 0; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            const std::string path = {static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(DeEscaped(EscapedPath(path)), path) << first << " " << second;
        }
    }
}

TEST(DeEscaped, UndoesEscapedPathForEveryMixtureOfSpecialCharacters)
{
    const std::string marks = "\\'\n~/a";
    for (size_t number = 0; number < 6 * 6 * 6 * 6 * 6; ++number) {
        std::string path;
        for (size_t rest = number; path.size() < 5; rest /= marks.size())
            path += marks[rest % marks.size()];
        ASSERT_EQ(DeEscaped(EscapedPath(path)), path);
    }
}

TEST(DeEscaped, Cases)
{
    const struct {
        const char* why;
        const char* text;
        const char* plain;
    } kCases[] = {
        {"one backslash goes", "a\\ b", "a b"},
        {"one of two backslashes goes", "a\\\\b", "a\\b"},
        {"three are one that escapes and one that is escaped, twice", "\\\\\\n", "\\n"},
        {"a backslash before a character that needs none", "\\a\\/", "a/"},
        {"a backslash with nothing behind it stays", "a\\", "a\\"},
        {"quotes stay", "it's 'x' \"y\"", "it's 'x' \"y\""},
        {"a path that was never escaped", "src/two words.h", "src/two words.h"},
        {"beyond ASCII", "\\\xc3\xa9\xff", "\xc3\xa9\xff"},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(DeEscaped(c.text), c.plain) << c.why;
}

TEST(ShellEscapeString, Cases)
{
    const struct {
        const char* why;
        const char* commands;
        const char* escaped;
    } kCases[] = {
        {"bare parentheses", "find . ( -name x )", "find . \\( -name x \\)"},
        {"beside each other", "(())", "\\(\\(\\)\\)"},
        {"escaped already", "find . \\( -name x \\)", "find . \\( -name x \\)"},
        {"behind an escaped backslash", "\\\\(", "\\\\\\("},
        {"in double quotes", "echo \"(a)\" (", "echo \"(a)\" \\("},
        {"in single quotes", "echo '(a)' (", "echo '(a)' \\("},
        {"double quotes in single quotes open nothing", "'\"' (", "'\"' \\("},
        {"a single quote in double quotes opens nothing", "\"it's\" (", "\"it's\" \\("},
        {"an escaped double quote closes nothing", "\"\\\"(\" (", "\"\\\"(\" \\("},
        {"a backslash in single quotes escapes nothing", "'\\' (", "'\\' \\("},
        {"an escaped quote opens nothing", "\\' ( \\\" (", "\\' \\( \\\" \\("},
        {"in a comment line", "# run (this)\n(", "# run (this)\n\\("},
        {"a quote in a comment line opens nothing", "# it's\n(", "# it's\n\\("},
        {"a backslash at the end of a comment joins no lines", "# x\\\n(", "# x\\\n\\("},
        {"a comment behind blanks", "\t # (x)\n(", "\t # (x)\n\\("},
        {"a comment behind a command", "ls ; # don't (x)\n(", "ls ; # don't (x)\n\\("},
        {"a number sign inside a word", "a#(b)", "a#\\(b\\)"},
        {"a number sign in quotes", "'#' ( \"#\" (", "'#' \\( \"#\" \\("},
        {"a number sign right behind quotes", "''# (", "''# \\("},
        {"an escaped number sign", "\\# (", "\\# \\("},
        {"a number sign behind an escaped blank", "\\ # (", "\\ # \\("},
        {"a number sign in a word over two lines", "a\\\n#(", "a\\\n#\\("},
        {"a comment behind a joined line", "a \\\n#(", "a \\\n#("},
        {"a number sign behind a parenthesis is part of its word", "(#)", "\\(#\\)"},
        {"an unclosed quote lasts to the end", "'(", "'("},
        {"a backslash at the end", "(\\", "\\(\\"},
        {"all else stays", "a | b > c; $x * ~/y\n", "a | b > c; $x * ~/y\n"},
        {"nothing", "", ""},
    };
    for (const auto& c : kCases) {
        std::string commands = c.commands;
        ShellEscapeString(commands);
        EXPECT_EQ(commands, c.escaped) << c.why;
    }
}

TEST(ShellEscapeString, IsIdempotent)
{
    const std::string alphabet = "()'\"\\#\n a;";
    for (size_t number = 0; number < 100000; ++number) {
        std::string once;
        for (size_t rest = number; once.size() < 5; rest /= alphabet.size())
            once += alphabet[rest % alphabet.size()];
        const std::string commands = once;
        ShellEscapeString(once);
        std::string twice = once;
        ShellEscapeString(twice);
        ASSERT_EQ(twice, once) << "from: " << commands;
    }
}

TEST(ShellEscapeString, MakesTheFindCommandsRunnable)
{
    const TempDirectory directory;
    const std::string header = directory.Write("it's (new)/a.h", "");
    directory.Write("it's (new)/a.txt", "");
    std::string commands = "\n# Don't be shy (it is only a comment):\nfind " + EscapedPath(directory.Path()) +
                           " -type f -and ( -name \"*.h\" -o -name '(x)' ) | sort\n";
    ShellEscapeString(commands);
    EXPECT_EQ(OutputOfShell(commands), header + "\n");
}
