// Snapshots of an index that is made from texts.
#pragma once

#include "symbols/store/Store.h"
#include "tagging/SourceParser.h"
#include "tagging/ctags/CtagsProgram.h"
#include "tests/support/TempDirectory.h"

#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>

// Parses texts as the index parses files. SIGPIPE is ignored from then on, as in all programs that run ctags.
class TextsParser {
public:
    TextsParser()
    {
        std::signal(SIGPIPE, SIG_IGN);
        tagging::Settings settings;
        settings.ctags.program = *tagging::FindCtags(temporaries.Path());
        settings.ctags.directory = temporaries.Path();
        settings.ctags.temporaries = temporaries.Path();
        parser = std::make_unique<tagging::TextParser>(settings);
    }

    tagging::TextParser& Parser() { return *parser; }

    // Files by their paths; a path that begins with "/" belongs to the system.
    symbols::SnapshotPointer Snapshot(const std::map<std::string, std::string>& files)
    {
        const symbols::SnapshotPointer project = Parsed(files, false);
        return symbols::Combined(project, Parsed(files, true), "/", {});
    }

private:
    symbols::SnapshotPointer Parsed(const std::map<std::string, std::string>& files, bool areSystem)
    {
        symbols::SnapshotPointer snapshot;
        const auto writer =
            symbols::WriteInMemory(nullptr, [&](symbols::SnapshotPointer made) { snapshot = std::move(made); });
        for (const auto& [path, text] : files) {
            if (path.starts_with('/') != areSystem)
                continue;
            const auto source = parser->Parse(path, text, tagging::TextParser::Locals::No);
            EXPECT_TRUE(source) << path;
            if (source)
                writer->Put(path.substr(areSystem ? 1 : 0), {text.size(), 1, 1}, **source);
        }
        EXPECT_TRUE(writer->Commit());
        return snapshot;
    }

    TempDirectory temporaries;
    std::unique_ptr<tagging::TextParser> parser;
};

// The same with a parser of its own.
inline symbols::SnapshotPointer SnapshotOf(const std::map<std::string, std::string>& files)
{
    return TextsParser().Snapshot(files);
}
