#include "wren/text/EditorConfig.h"

#include "base/FindProgram.h"
#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace wren {

namespace {

EditorConfig With(const std::function<void(EditorConfig&)>& set)
{
    EditorConfig config;
    set(config);
    return config;
}

struct OutputCase {
    const char* why;
    const char* output;
    EditorConfig config;
};

const OutputCase kOutputCases[] = {
    {"nothing", "", {}},
    {"tabs", "indent_style=tab\ntab_width=8\n", With([](auto& config) {
         config.usesTabs = true;
         config.tabWidth = config.level = 8;
     })},
    {"blanks", "indent_style=space\nindent_size=2\n", With([](auto& config) {
         config.usesTabs = false;
         config.level = 2;
     })},
    {"the level is a tab's width", "indent_size=tab\ntab_width=3\n",
     With([](auto& config) { config.tabWidth = config.level = 3; })},
    {"no level of that width", "indent_size=0\ntab_width=-1\nmax_line_length=off\n", {}},
    {"a level that no screen has", "indent_size=65\ntab_width=99999999999999\n", {}},
    {"what is done when it is saved", "trim_trailing_whitespace=true\ninsert_final_newline=true\n",
     With([](auto& config) { config.trimsBlanks = config.endsLastLine = true; })},
    {"the longest line", "max_line_length=120", With([](auto& config) { config.longestLine = 120; })},
    {"the ends of lines", "end_of_line=crlf\n", With([](auto& config) { config.ends = LineEnds::Windows; })},
    {"the encoding", "charset=latin1\n", With([](auto& config) {
         config.encoding = TextEncoding{"ISO-8859-1", false};
     })},
    {"an encoding with a mark", "charset=utf-8-bom\n", With([](auto& config) {
         config.encoding = TextEncoding{"UTF-8", true};
     })},
    {"unknown names and values",
     "indent_style=both\ncolour=red\n=\nindent_size\nend_of_line=lfcr\ncharset=ebcdic\n",
     {}},
};

class EditorConfigFiles : public testing::Test {
protected:
    void SetUp() override
    {
        if (!base::FindProgram("editorconfig", "/"))
            GTEST_SKIP() << "editorconfig is not installed";
    }
    base::Result<EditorConfig> For(const std::string& path) { return EditorConfigFor(tree / path); }

    TempDirectory tree;
};

} // namespace

TEST(EditorConfigOutput, Cases)
{
    for (const OutputCase& c : kOutputCases)
        EXPECT_EQ(ReadEditorConfig(c.output), c.config) << c.why;
}

TEST_F(EditorConfigFiles, TheNearestCounts)
{
    tree.Write(".editorconfig", "root = true\n[*]\nindent_style = tab\n[*.{h,c}]\ntab_width = 8\n");
    tree.Write("lib/.editorconfig", "[*.c]\nindent_style = space\nindent_size = 2\n");
    EXPECT_EQ(For("a.c")->usesTabs, true);
    EXPECT_EQ(For("a.c")->tabWidth, 8);
    EXPECT_EQ(For("a.txt")->tabWidth, std::nullopt);
    EXPECT_EQ(For("lib/a.c")->usesTabs, false);
    EXPECT_EQ(For("lib/a.c")->level, 2);
    EXPECT_EQ(For("lib/a.h")->usesTabs, true);
}

TEST_F(EditorConfigFiles, WithoutOneNothingIsSaid)
{
    const base::Result<EditorConfig> config = For("a.c");
    ASSERT_TRUE(config);
    EXPECT_EQ(*config, EditorConfig());
}

TEST_F(EditorConfigFiles, APipeIsRefusedByName)
{
    ASSERT_EQ(::mkfifo((tree / ".editorconfig").c_str(), 0600), 0);
    const base::Result<EditorConfig> config = For("src/a.c");
    ASSERT_FALSE(config);
    EXPECT_EQ(config.Failure().Message(),
              (tree / ".editorconfig") + " is not a regular file: no .editorconfig is followed here");
}

TEST_F(EditorConfigFiles, AFileOfMegabytesIsRefusedByName)
{
    tree.Write(".editorconfig", std::string(100'000, '#'));
    const base::Result<EditorConfig> config = For("a.c");
    ASSERT_FALSE(config);
    EXPECT_EQ(config.Failure().Message(), (tree / ".editorconfig") + " is too long: no .editorconfig is followed here");
}

} // namespace wren
