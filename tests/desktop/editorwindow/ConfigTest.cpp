// What the .editorconfig files of a tree do to its texts.
#include "base/FindProgram.h"
#include "tests/desktop/editorwindow/EditorStory.h"
#include "tests/support/FileContent.h"
#include "wren/desktop/MainWindow.h"
#include "wren/desktop/NoticeBar.h"

#include <filesystem>
#include <sys/stat.h>

namespace {

class EditorConfigStory : public EditorStory {
protected:
    void SetUp() override
    {
        if (!base::FindProgram("editorconfig", "/"))
            GTEST_SKIP() << "editorconfig is not installed";
        EditorStory::SetUp();
        home.Write("tree/.editorconfig", "root = true\n[*.c]\nindent_style = tab\ntab_width = 8\nmax_line_length = 90\n"
                                         "trim_trailing_whitespace = true\ninsert_final_newline = true\n");
    }
    void OpenToo(const std::string& path)
    {
        TheEditor().Actions().documents.Open(path);
        Settle();
    }
};

} // namespace

TEST_F(EditorConfigStory, NewLinesAreIndentedAsItSays)
{
    Start({home.Write("tree/a.c", "int f(void)\n{\n    return 1;\n}\n")});
    EXPECT_EQ(View().IndentsWith(), (wren::Indentation{true, 8}));
    EXPECT_EQ(View().tabWidth(), 8);
    EXPECT_EQ(View().edgeColumn(), 90);
    OpenToo(home.Write("tree/a.txt", "one\n    two\n"));
    EXPECT_EQ(View().IndentsWith(), (wren::Indentation{false, 4})) << "only files that its patterns name";
}

TEST_F(EditorConfigStory, SavingTidiesTheTextInOneStep)
{
    const std::string path = home.Write("tree/a.c", "int a; \t\n\nint b;");
    Start({path});
    Type("x");
    Press("Ctrl+S");
    EXPECT_EQ(Content(path), "xint a;\n\nint b;\n");
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "xint a; \t\n\nint b;");
    const std::string other = home.Write("tree/a.txt", "one \n");
    OpenToo(other);
    Type("x");
    Press("Ctrl+S");
    EXPECT_EQ(Content(other), "xone \n");
}

TEST_F(EditorConfigStory, SavingConvertsLineEnds)
{
    home.Write("tree/.editorconfig", "root = true\n[*]\nend_of_line = crlf\n");
    const std::string path = home.Write("tree/a.c", "int a;\nint b;\r\n");
    Start({path});
    Type("x");
    Press("Ctrl+S");
    EXPECT_EQ(Content(path), "xint a;\r\nint b;\r\n");
    Press("Ctrl+Z");
    EXPECT_EQ(Text(), "xint a;\nint b;\r\n");
    OpenToo(home.Write("tree/b.c", ""));
    Type("int a;\n");
    EXPECT_EQ(Text(), "int a;\r\n") << "what is typed into an empty text has them at once";
    Press("Ctrl+S");
}

TEST_F(EditorConfigStory, FilesAreReadAndMadeInItsEncoding)
{
    home.Write("tree/.editorconfig", "root = true\n[*]\ncharset = latin1\n[*.txt]\ncharset = utf-8-bom\n");
    const std::string old = home.Write("tree/a.c", "caf\xe9");
    Start({old});
    EXPECT_EQ(Text(), "caf\xc3\xa9");
    const std::string ascii = home.Write("tree/b.c", "cafe");
    OpenToo(ascii);
    View().insert("\u00e9");
    Press("Ctrl+S");
    EXPECT_EQ(Content(ascii), "\xe9"
                              "cafe");
    const std::string other = home.Write("tree/c.c", "\xc3\xa9");
    OpenToo(other);
    EXPECT_EQ(Text(), "\xc3\xa9") << "it is not what the configuration says";
    TheEditor().Actions().documents.OpenOrNew({home / "tree/new.txt", 0, 0});
    Type("x");
    Press("Ctrl+S");
    EXPECT_EQ(Content(home / "tree/new.txt"), "\xef\xbb\xbfx");
}

TEST_F(EditorConfigStory, ThePreferenceSwitchesItOffAndOn)
{
    Start({home.Write("tree/a.c", "int a;\n")});
    InPreferences([](QWidget& dialog) { Tick(dialog, "Follow .editorconfig files"); });
    EXPECT_EQ(View().IndentsWith(), (wren::Indentation{false, 4}));
    InPreferences([](QWidget& dialog) { Tick(dialog, "Follow .editorconfig files"); });
    EXPECT_EQ(View().IndentsWith(), (wren::Indentation{true, 8}));
}

TEST_F(EditorConfigStory, APipeIsReportedOnce)
{
    ASSERT_EQ(::mkfifo((home / "tree/lib.editorconfig").c_str(), 0600), 0);
    std::filesystem::create_directories(home / "tree/lib");
    std::filesystem::rename(home / "tree/lib.editorconfig", home / "tree/lib/.editorconfig");
    Start({home.Write("tree/lib/a.c", "int a;\n")});
    EXPECT_THAT(TheEditor().Window().Notices().Told().toStdString(), testing::HasSubstr("is not a regular file"));
    EXPECT_EQ(View().IndentsWith(), (wren::Indentation{false, 4}));
}
