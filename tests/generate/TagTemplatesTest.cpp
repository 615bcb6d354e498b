#include "generate/TagTemplates.h"

#include "tests/generate/GenerateTest.h"
#include "vetch/storage/BEntry.h"
#include "vetch/support/ShellEscape.h"

namespace {

class TagTemplates : public GenerateTest {
protected:
    // What becomes of a text for tags of "/src"; the tags program is installed.
    std::string Built(std::string text, const char* directory = "/src", bool installed = true)
    {
        BuildTagString(&host, BEntry(directory), installed, text);
        return text;
    }
};

// A template is written in pieces in its source; here it stands as a user meets it in the Worksheet, before the
// placeholders are filled in.
TEST_F(TagTemplates, HaveExactlyThisText)
{
    EXPECT_STREQ(kGenerateSystemCtags, R"(
# Execute the following line to generate tags for the system headers:
find $(SYSTEM_HEADERS_WHERE) ($(FILES_TO_INDEX_WILDCARDS) ) $(EXCLUDE_GCC) | $(CTAGS_TO_RUN) -I $(IGNORE_STRINGS) --c-kinds=+p --excmd=number -f $(SYSTEM_TAGS_DESTINATION) -L - )");
    EXPECT_STREQ(
        kIncludeSpecificCompiler,
        R"(find $(GCC_INCLUDE_DIRECTORY) | $(CTAGS_TO_RUN) -I $(IGNORE_STRINGS) --c-kinds=+p --excmd=number --language-force="C++" -f $(SYSTEM_TAGS_DESTINATION) -L - --append=yes
)");
    EXPECT_STREQ(kGenerateLocalCtags, R"(
# Execute the following line to generate tags in this directory:
find $(LOCAL_HEADERS_WHERE) ($(FILES_TO_INDEX_WILDCARDS) ) | $(CTAGS_TO_RUN) --c-kinds=+p --excmd=number -f $(LOCAL_TAGS_DESTINATION) -L -
)");
    EXPECT_STREQ(kInstallCtags, R"(
# cplustags are not installed on your system. Execute the following line to install them:
sudo cp $(CTAGS_TO_INSTALL) /usr/bin/cplustags ; sudo chmod +x /usr/bin/cplustags)");
}

TEST_F(TagTemplates, BecomeTheWholeCommandsOfANewUser)
{
    EXPECT_EQ(Built(kGenerateLocalCtags, "/src", false), LocalCommand("/src", "./tags"));
    EXPECT_EQ(Built(kGenerateSystemCtags, "/src", false), SystemCommand(kTags));
    EXPECT_EQ(Built(kIncludeSpecificCompiler, "/src", false), CompilerCommand(kTags));
}

struct Placeholder {
    const char* why;
    const char* text;
    const char* becomes;
};

const Placeholder kPlaceholders[] = {
    {"the directories as they stand", "$(SYSTEM_HEADERS_WHERE)", "/System/Library/Frameworks /usr/include"},
    {"the compiler's headers are left out of the first run", "$(EXCLUDE_GCC)",
     " -and ! \\( -path /usr/include/gcc/darwin\\* \\) "},
    {"and read in the second", "$(GCC_INCLUDE_DIRECTORY)", "/usr/include/gcc/darwin/default/"},
    {"find matches this one, not the shell", "$(GCC_EXCLUDE_DIRECTORY)", "/usr/include/gcc/darwin\\*"},
    {"the shell expands the home directory", "$(SYSTEM_TAGS_DESTINATION)", "~/Library/Caches/SystemHeaderTags"},
    {"seen from the Worksheet's shell", "$(LOCAL_TAGS_DESTINATION)", "./tags"},
    {"the directory", "$(LOCAL_HEADERS_WHERE)", "/src"},
    {"the installed program, by name", "$(CTAGS_TO_RUN)", "cplustags"},
    {"every occurrence", "$(LOCAL_HEADERS_WHERE):$(LOCAL_HEADERS_WHERE)", "/src:/src"},
    {"other names stay, and are no commands of the shell", "$(OTHER) $(CTAGS_TO_INSTALL)",
     "$\\(OTHER\\) $\\(CTAGS_TO_INSTALL\\)"},
    {"bare parentheses are find's", "( a ) \\( b \\) \"( c )\" '( d )'", "\\( a \\) \\( b \\) \"( c )\" '( d )'"},
    {"a comment is for the user", "# (a comment)\n( b )", "# (a comment)\n\\( b \\)"},
    {"what a shell reads stays", "a | b \"*\" ~/c \\d > e ; f ! g", "a | b \"*\" ~/c \\d > e ; f ! g"},
};

TEST_F(TagTemplates, AreFilledIn)
{
    for (const Placeholder& each : kPlaceholders) {
        const std::string built = Built(each.text);
        EXPECT_EQ(built, each.becomes) << each.why;
        std::string again = built;
        ShellEscapeString(again);
        EXPECT_EQ(again, built) << "escaping twice is escaping once: " << each.why;
    }
}

struct Suffixes {
    const char* why;
    const char* setting;
    const char* clauses;
};

const Suffixes kSuffixes[] = {
    {"a new user's", kIndexSuffixesDefault,
     R"(  -name "*.h" -o -name "*.c" -o -name "*.cp" -o -name "*.cpp" -o -name "*.m" -o -name "*.mm")"},
    {"a single one", "*.h", R"(  -name "*.h")"},
    {"several blanks are one", "*.h   *.c", R"(  -name "*.h" -o -name "*.c")"},
    {"blanks at the end add nothing", "*.h  ", R"(  -name "*.h")"},
    {"a blank at the beginning gives an empty pattern", " *.h", R"(  -name "" -o -name "*.h")"},
    {"several do not give several", "   *.h", R"(  -name "" -o -name "*.h")"},
    {"none at all give an empty pattern, not every file", "", R"(  -name "")"},
    {"nothing but blanks", "  ", R"(  -name "")"},
    {"other blank space is no blank", "*.h\t*.c", "  -name \"*.h\t*.c\""},
    {"what stands there is not escaped", "a\"b (c)", "  -name \"a\"b\" -o -name \"(c)\""},
};

TEST_F(TagTemplates, NameEachSuffix)
{
    for (const Suffixes& each : kSuffixes) {
        settings.Set("DeclIndexSuffixes", each.setting);
        std::string text = "'$(FILES_TO_INDEX_WILDCARDS)'"; // in quotes: no parenthesis is find's here
        EXPECT_EQ(Built(text), "'" + std::string(each.clauses) + "'") << each.why;
    }
}

struct Directories {
    const char* why;
    const char* setting;
    bool needsCompilers;
};

const Directories kDirectories[] = {
    {"a new user's", kScanSystemDirectoriesDefault, true},
    {"alone", "/usr/include", true},
    {"not there", "/System/Library/Frameworks", false},
    {"none", "", false},
    {"a directory below it", "/usr/include/c++", true},
    {"another one whose name goes on", "/usr/include-old", true},
    {"another one that ends with it", "/opt/usr/include", true},
    {"only a part of it", "/usr/inc lude", false},
};

TEST_F(TagTemplates, AddTheCompilersHeadersWhenTheTextHasUsrInclude)
{
    for (const Directories& each : kDirectories) {
        settings.Set("DeclScanSystemDirectories", each.setting);
        EXPECT_EQ(NeedGCCIncludes(&host), each.needsCompilers) << each.why;
        EXPECT_EQ(SecondSystemTemplate(&host), each.needsCompilers ? kIncludeSpecificCompiler : nullptr) << each.why;
        EXPECT_EQ(Built("$(EXCLUDE_GCC)") != "", each.needsCompilers) << each.why;
        EXPECT_EQ(Built("$(SYSTEM_HEADERS_WHERE)"), each.setting) << each.why;
    }
}

TEST_F(TagTemplates, TakeTheIgnoredMacrosUnchanged)
{
    settings.Set("DeclIgnoreStrings", "A B,\"C\" $D *");
    EXPECT_EQ(Built("-I $(IGNORE_STRINGS)"), "-I A B,\"C\" $D *");
}

TEST_F(TagTemplates, ExpandPlaceholdersInSettings)
{
    settings.Set("DeclIgnoreStrings", "$(LOCAL_HEADERS_WHERE)");
    EXPECT_EQ(Built("$(IGNORE_STRINGS)", "/a b"), "/a\\ b");
}

struct Path {
    const char* why;
    std::string directory;
    std::string word;
};

const Path kPaths[] = {
    {"blanks", "/a b", "/a\\ b"},
    {"quotes", "/it's \"b\"", "/it\\'s\\ \\\"b\\\""},
    {"a command", "/$(touch pwned)`id`;x", "/\\$\\(touch\\ pwned\\)\\`id\\`\\;x"},
    {"a line break", "/a\nb", "/a'\n'b"},
    {"no UTF-8", "/\xff\xc3(", "/\xff\xc3\\("},
    {"a home directory that is none", "/~/x", "/\\~/x"},
    {"a placeholder, which is not filled in", "/$(LOCAL_HEADERS_WHERE)", "/\\$\\(LOCAL_HEADERS_WHERE\\)"},
    {"one that is filled in later", "/$(CTAGS_TO_RUN)", "/\\$\\(CTAGS_TO_RUN\\)"},
};

TEST_F(TagTemplates, EscapeTheDirectoryForTheShell)
{
    for (const Path& each : kPaths)
        EXPECT_EQ(Built("find $(LOCAL_HEADERS_WHERE)", each.directory.c_str()), "find " + each.word) << each.why;
}

TEST_F(TagTemplates, ReplaceAPlaceholderInACopy)
{
    for (const Path& each : kPaths) {
        std::string text = "$(X) and $(X), not $(Y)";
        const std::string copy = ReplaceAllWithPath(text, "$(X)", each.directory.c_str());
        EXPECT_EQ(text, each.word + " and " + each.word + ", not $(Y)") << each.why;
        EXPECT_EQ(copy, text) << each.why;
    }
    std::string home = "$(X)";
    EXPECT_EQ(ReplaceAllWithPath(home, "$(X)", "~/a b"), "~/a\\ b") << "the shell expands it";
}

TEST_F(TagTemplates, WriteToTemporaryFilesWhenTheyAreRun)
{
    std::string text = "$(SYSTEM_TAGS_DESTINATION) $(LOCAL_TAGS_DESTINATION) $(LOCAL_TAGS_DESTINATION)";
    BuildTagTmpLocationString(&host, "/a b/tags.tmp", text);
    EXPECT_EQ(text, "~/Library/Caches/SystemHeaderTags.temp /a\\ b/tags.tmp /a\\ b/tags.tmp");
    EXPECT_EQ(Built(text), text) << "nothing is left to fill in";
}

// The program

TEST_F(TagTemplates, RunTheBundlesProgramWhenNoneIsInstalled)
{
    EXPECT_EQ(Built("$(CTAGS_TO_RUN) x", "/src", false), BundlesProgram() + " x");
}

TEST_F(TagTemplates, RunTheProgramOfTheEnvironmentBeforeAllOthers)
{
    const std::string mine = home.Write("my ctags", "");
    const struct {
        const char* why;
        std::string value;
        const char* installed;
        std::string bundled;
    } kCases[] = {
        {"it is there", mine, nullptr, ""},
        {"any kind of file will do", home.Path(), nullptr, ""},
        {"it is missing", home / "no ctags", "cplustags", BundlesProgram()},
        {"it is empty", "", "cplustags", BundlesProgram()},
    };
    for (const auto& each : kCases) {
        ::setenv("WREN_CTAGS", each.value.c_str(), 1);
        const std::string escaped = EscapedPath(each.value);
        EXPECT_EQ(Built("$(CTAGS_TO_RUN)", "/src", true), each.installed ? each.installed : escaped) << each.why;
        EXPECT_EQ(Built("$(CTAGS_TO_RUN)", "/src", false), each.bundled.empty() ? escaped : each.bundled) << each.why;
    }
}

TEST_F(TagTemplates, FindTheProgramInTheBundle)
{
    const long before = vetch::LiveCFObjects();
    EXPECT_EQ(CTagsInWrenPath(&host), BundlesProgram());
    __CFBundle awkward{home / "it's $(a) bundle"};
    host.bundle = &awkward;
    EXPECT_EQ(CTagsInWrenPath(&host), "") << "it has no resources";
    home.Write("it's $(a) bundle/Contents/Resources/cplustags", "");
    EXPECT_EQ(CTagsInWrenPath(&host), home.Path() + "/it\\'s\\ \\$\\(a\\)\\ bundle/Contents/Resources/cplustags");
    EXPECT_EQ(Built("$(CTAGS_TO_RUN)", "/src", false), CTagsInWrenPath(&host)) << "escaped once";
    host.bundle = nullptr;
    EXPECT_EQ(CTagsInWrenPath(&host), "");
    EXPECT_EQ(Built("x | $(CTAGS_TO_RUN) -f", "/src", false), "x |  -f");
    EXPECT_EQ(vetch::LiveCFObjects(), before) << "every object is released";
}

} // namespace
