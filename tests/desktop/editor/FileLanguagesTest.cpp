// Which language a file is of, and that its words have colours.
#include "wren/desktop/editor/FileLanguages.h"
#include "wren/desktop/editor/CodeView.h"

#include <gtest/gtest.h>

namespace wren {
namespace {

std::string LexerOf(const char* path, const char* beginning)
{
    const FileLanguage* language = LanguageOf(path, beginning);
    return language == nullptr ? "" : language->lexer;
}

// "|" stands before a character of the wanted colour.
struct ColourCase {
    const char* path;
    std::string marked;
    QColor EditorColours::*colour;
};

const ColourCase kColourCases[] = {
    {"Makefile", "|# note\nall: a.o\n", &EditorColours::comment},
    {"Makefile", "|all: a.o\n", &EditorColours::keyword},
    {"CMakeLists.txt", "|add_library(a a.c)\n", &EditorColours::keyword},
    {"CMakeLists.txt", "set(a |\"b\")\n", &EditorColours::string},
    {"run.sh", "|if true; then\n", &EditorColours::keyword},
    {"run", "#!/bin/sh\n|for a in b; do\n", &EditorColours::keyword},
    {"a.py", "|def f():\n", &EditorColours::keyword},
    {"a.py", "x = |'text'\n", &EditorColours::string},
    {"a.json", "{|\"name\": 1}\n", &EditorColours::keyword},
    {"a.json", "{\"name\": |1}\n", &EditorColours::number},
    {"a.yml", "|name: 1\n", &EditorColours::keyword},
    {"a.md", "|# Title\n", &EditorColours::keyword},
    {"a.s", "|# note\n", &EditorColours::comment},
    {"a.s", "|.globl main\n", &EditorColours::preprocessor},
    {"a.S", "|#include <a.h>\n", &EditorColours::preprocessor},
    {"vmlinux.lds.S", "|SECTIONS\n{\n}\n", &EditorColours::keyword},
    {"notes.txt", "|if for int # \"a\"\n", &EditorColours::text},
    {"a.c", "|int a;\n", &EditorColours::keyword},
    {"a.c", "#!/bin/sh\n|int a;\n", &EditorColours::keyword},
};

} // namespace

TEST(FileLanguages, BelongToNamesAndFirstLines)
{
    struct Case {
        const char* path;
        const char* beginning;
        const char* lexer;
    };
    const Case kCases[] = {
        {"/x/Makefile", "", "makefile"},
        {"drivers/Kbuild", "", "makefile"},
        {"notMakefile", "", ""},
        {"a.mk", "", "makefile"},
        {"a.lds.S", "", "cpp"},
        {"configure", "#!/bin/sh\n", "bash"},
        {"configure", "#! /usr/bin/env bash", "bash"},
        {"tool", "#!/usr/bin/env -S python3 -u\n", "python"},
        {"tool", "#!/usr/bin/perl\n", ""},
        {"tool", "#!\n/bin/sh\n", ""},
        {"tool", "#!", ""},
        {"tool", "", ""},
        {"a.py", "#!/bin/sh\n", "python"},
    };
    for (const Case& c : kCases)
        EXPECT_EQ(LexerOf(c.path, c.beginning), c.lexer) << c.path << c.beginning;
}

TEST(FileLanguages, ColourTheirWords)
{
    for (const ColourCase& c : kColourCases) {
        std::string marked = c.marked;
        const size_t place = marked.find('|');
        marked.erase(place, 1);
        CodeView view;
        view.SetBytes(marked);
        view.SetLanguageFor(c.path);
        const ViewText text(view);
        text.Send(QsciScintilla::SCI_COLOURISE, 0, text.Length());
        const long ink = text.Send(QsciScintilla::SCI_STYLEGETFORE, text.StyleAt(static_cast<long>(place)));
        const QColor shown(static_cast<int>(ink & 0xff), static_cast<int>(ink >> 8 & 0xff),
                           static_cast<int>(ink >> 16 & 0xff));
        EXPECT_EQ(shown.name().toStdString(), (ColoursOf(false).*c.colour).name().toStdString())
            << c.path << ": " << c.marked << " style " << text.StyleAt(static_cast<long>(place));
    }
}

} // namespace wren
