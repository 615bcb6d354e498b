// The search of "Find in Files" as a program, for comparison with other searchers.
// Usage: find_in_files_bench DIRECTORY TEXT|EXPRESSION [case] [words] [expression]
// Prints "PATH:LINE:COLUMN:SOURCE" for each match, as they are found.
#include "wren/search/FilesSearch.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

int main(int count, char** words)
{
    if (count < 3)
        return 2;
    wren::FilesQuery query;
    query.root = words[1];
    query.text.text = words[2];
    query.limit = 10'000'000;
    for (int i = 3; i < count; i++) {
        const std::string_view option = words[i];
        query.text.matchesCase = query.text.matchesCase || option == "case";
        query.text.wholeWords = query.text.wholeWords || option == "words";
        query.text.isExpression = query.text.isExpression || option == "expression";
    }
    const base::CancelToken never;
    const auto print = [](const wren::FoundInFile& found) {
        for (const wren::FoundLine& line : found.lines)
            std::printf("%s:%ld:%ld:%s\n", found.path.c_str(), line.line, line.column, line.source.c_str());
    };
    const base::Result<wren::FilesFound> found = wren::SearchFiles(query, {}, print, never);
    if (!found)
        std::fprintf(stderr, "%s\n", found.Failure().Message().c_str());
    return found ? EXIT_SUCCESS : EXIT_FAILURE;
}
