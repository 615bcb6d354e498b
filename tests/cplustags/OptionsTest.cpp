#include "cplustags/Options.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <sstream>

namespace cplustags {
namespace {

using Words = std::vector<std::string>;

// Reads the words of a command line without the program's name, and the environment.
Options Read(const Words& words, int* status)
{
    std::vector<const char*> pointers = {"cplustags"};
    for (const std::string& word : words)
        pointers.push_back(word.c_str());
    return ReadOptions(static_cast<int>(pointers.size()), pointers.data(), status);
}

struct Reading {
    Options options;
    int status = 0;
    std::string output;
    std::string errors;
};

Reading ReadAll(const Words& words)
{
    Reading reading;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    reading.options = Read(words, &reading.status);
    reading.output = testing::internal::GetCapturedStdout();
    reading.errors = testing::internal::GetCapturedStderr();
    return reading;
}

class Variable {
public:
    Variable(const char* name, const char* value) : name(name) { ::setenv(name, value, 1); }
    ~Variable() { ::unsetenv(name); }

private:
    const char* name;
};

TEST(Options, TheOptionsOfTheTemplatesAreUnderstood)
{
    const Reading system = ReadAll({"-I", "A,B=C", "--c-kinds=+p", "--excmd=number", "-f", "/x/y.temp", "-L", "-"});
    EXPECT_EQ(system.status, -1) << system.errors;
    EXPECT_EQ(system.options.ignored, "A,B=C");
    EXPECT_TRUE(system.options.prototypes);
    EXPECT_EQ(system.options.target, "/x/y.temp");
    EXPECT_EQ(system.options.list, "-");
    EXPECT_FALSE(system.options.append);
    EXPECT_EQ(system.options.language, "");
    EXPECT_FALSE(system.options.followLinks);

    const Reading compiler = ReadAll({"--language-force=C++", "-L", "list", "--append=yes"});
    EXPECT_EQ(compiler.status, -1) << compiler.errors;
    EXPECT_EQ(compiler.options.language, "C++");
    EXPECT_EQ(compiler.options.list, "list");
    EXPECT_TRUE(compiler.options.append);
    EXPECT_FALSE(compiler.options.prototypes);
    EXPECT_EQ(compiler.options.target, "tags");
    EXPECT_FALSE(compiler.options.followLinks);
}

TEST(Options, LinksAreFollowedOnlyOnRequest)
{
    EXPECT_FALSE(ReadAll({"-f", "t", "a.c"}).options.followLinks);
    const Reading reading = ReadAll({"--follow-links", "-f", "t", "a.c"});
    EXPECT_EQ(reading.status, -1) << reading.errors;
    EXPECT_TRUE(reading.options.followLinks);
}

TEST(Options, OtherWordsAreFiles)
{
    const Reading words = ReadAll({"a.c", "-I", "A", "B", "C", "--totals", "-f", "-", "--", "-d.c"});
    EXPECT_EQ(words.status, -1) << words.errors;
    EXPECT_EQ(words.options.files, (Words{"a.c", "B", "C", "-d.c"})) << "what follows -I and its list is a file";
    EXPECT_EQ(words.options.ignored, "A");
    EXPECT_EQ(words.options.target, "-");
    EXPECT_TRUE(words.options.totals);
}

TEST(Options, AnEmptyListOfMacrosDoesNotSwallowTheNextOption)
{
    const Reading reading = ReadAll({"-I", "--c-kinds=+p", "-f", "t", "-L", "-"});
    EXPECT_EQ(reading.status, -1) << reading.errors;
    EXPECT_EQ(reading.options.ignored, "");
    EXPECT_TRUE(reading.options.prototypes);
}

TEST(Options, AppendingNeedsNoValueAndCanBeTurnedOff)
{
    EXPECT_TRUE(ReadAll({"--append", "a.c"}).options.append);
    EXPECT_EQ(ReadAll({"--append", "a.c"}).options.files, Words{"a.c"});
    EXPECT_FALSE(ReadAll({"--append=no", "a.c"}).options.append);
    EXPECT_FALSE(ReadAll({"--append=yes", "--append=no", "a.c"}).options.append) << "the last one counts";
}

struct Refusal {
    const char* why;
    Words words;
    const char* named; // in the message
};

const Refusal kRefusals[] = {
    {"ctags has it, we do not", {"-R", "a.c"}, "-R"},
    {"an option nobody has", {"--foo", "a.c"}, "--foo"},
    {"with a value", {"--sort=no", "a.c"}, "--sort=no"},
    {"an abbreviation", {"--exc=number", "a.c"}, "--exc=number"},
    {"search patterns are of no use to the reader", {"--excmd=pattern", "a.c"}, "pattern"},
    {"other kinds", {"--c-kinds=+px", "a.c"}, "+px"},
    {"neither yes nor no", {"--append=maybe", "a.c"}, "maybe"},
    {"no language", {"--language-force", "C++"}, "--language-force"},
    {"no value", {"--excmd", "a.c"}, "--excmd"},
    {"a list stuck to its option", {"-IFOO", "a.c"}, "-IFOO"},
    {"a file stuck to its option", {"-ftags", "a.c"}, "-ftags"},
    {"no file", {"a.c", "-f"}, "-f"},
    {"an empty file", {"-f", "", "a.c"}, "-f"},
    {"totals of what", {"--totals=3", "a.c"}, "--totals"},
    {"commands for a terminal", {"--a\x1b[2J\xc2\x9bK"}, "--a\\x1b[2J\\xc2\\x9bK"},
    {"follow which links", {"--follow-links=yes", "a.c"}, "--follow-links"},
    {"nothing to tag", {"-f", "tags"}, "-L"},
    {"nothing at all", {}, "-L"},
};

TEST(Options, UnknownOptionsAreRefusedByName)
{
    for (const Refusal& refusal : kRefusals) {
        const Reading reading = ReadAll(refusal.words);
        EXPECT_EQ(reading.status, 2) << refusal.why;
        EXPECT_NE(reading.errors.find(refusal.named), std::string::npos) << refusal.why << ": " << reading.errors;
        EXPECT_NE(reading.errors.find("--help"), std::string::npos) << refusal.why;
        EXPECT_EQ(reading.output, "") << refusal.why;
    }
}

TEST(Options, TheEnvironmentSetsTheOtherOptions)
{
    const Variable ctags("CPLUSTAGS_CTAGS", "/opt/ctags");
    const Variable jobs("CPLUSTAGS_JOBS", "3");
    const Variable limit("CPLUSTAGS_TIME_LIMIT", "7");
    const Reading reading = ReadAll({"a.c"});
    EXPECT_EQ(reading.options.ctags, "/opt/ctags");
    EXPECT_EQ(reading.options.jobs, 3u);
    EXPECT_EQ(reading.options.timeLimit, 7u);
}

TEST(Options, BadEnvironmentVariablesAreRefusedByName)
{
    for (const char* name : {"CPLUSTAGS_JOBS", "CPLUSTAGS_TIME_LIMIT"})
        for (const char* value : {"0", "-1", "many", "3x", "99999999999999999999", "1000000"}) {
            const Variable variable(name, value);
            const Reading reading = ReadAll({"a.c"});
            EXPECT_EQ(reading.status, 2) << name << "=" << value;
            EXPECT_NE(reading.errors.find(name), std::string::npos) << reading.errors;
        }
    const Variable empty("CPLUSTAGS_JOBS", "");
    EXPECT_EQ(ReadAll({"a.c"}).status, -1) << "an empty one is none";
}

TEST(Options, HelpNamesEveryOptionAndVariable)
{
    const Reading help = ReadAll({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.errors, "");
    for (const char* text : {"-f FILE", "-L LIST", "-I NAMES", "--append=yes", "--c-kinds=+p", "--excmd=number",
                             "--language-force=NAME", "--follow-links", "--totals", "--version", "CPLUSTAGS_CTAGS",
                             "CPLUSTAGS_JOBS", "CPLUSTAGS_TIME_LIMIT", "Exit status", "Examples"})
        EXPECT_NE(help.output.find(text), std::string::npos) << text;
    for (std::istringstream lines(help.output); lines;) {
        std::string line;
        std::getline(lines, line);
        EXPECT_LE(line.size(), 120u) << line;
    }
}

TEST(Options, VersionNamesTheProgram)
{
    const Reading version = ReadAll({"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.output.rfind("cplustags ", 0), 0u) << version.output;
}

} // namespace
} // namespace cplustags
