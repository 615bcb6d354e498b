#include "wren/desktop/symbols/FilesQuestion.h"

#include "wren/desktop/symbols/ProjectRoot.h"

#include <filesystem>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

FoundPlace PlaceOf(FoundLine&& line, const std::string& root, const std::string& path)
{
    FoundPlace place;
    place.path = root + "/" + path;
    place.shown = path;
    place.line = line.line;
    place.column = line.column;
    const size_t blanks = std::min(line.source.find_first_not_of(" \t"), line.matchStart);
    place.source = line.source.substr(blanks);
    place.nameStart = line.matchStart - blanks;
    place.nameSize = line.matchSize;
    return place;
}

FilesQuery QueryOf(const FilesAsked& asked, const Question& question)
{
    FilesQuery query;
    query.text = asked.text;
    query.globs = asked.globs;
    query.replacement = asked.replacement;
    query.root = (fs::path(ProjectOf(asked.path, question.projects)) / asked.folder).lexically_normal().string();
    while (query.root.ends_with('/'))
        query.root.pop_back();
    return query;
}

FilesAnswer Search(const FilesQuery& query, const FilesAsked& asked, const Question& question, const FoundSink& sink)
{
    const base::Result<FilesFound> found = SearchFiles(query, asked.open, sink, question.cancel);
    if (!found)
        return {false, question.cancel.IsCancelled() ? "" : found.Failure().Message()};
    FilesAnswer answer;
    answer.more = found->more;
    if (found->hasGivenUp)
        answer.problem = "The expression takes too long in some files: not all of their matches are listed.";
    else if (found->tooLarge > 0)
        answer.problem = std::to_string(found->tooLarge) + " files of more than 256 MB were left out.";
    return answer;
}

} // namespace

FilesAnswer FindInFiles(const FilesAsked& asked, const Question& question,
                        const std::function<void(std::vector<FoundPlace> part)>& part)
{
    const FilesQuery query = QueryOf(asked, question);
    return Search(query, asked, question, [&](FoundInFile found) {
        std::vector<FoundPlace> places;
        places.reserve(found.lines.size());
        for (FoundLine& line : found.lines)
            places.push_back(PlaceOf(std::move(line), query.root, found.path));
        part(std::move(places));
    });
}

FilesAnswer ReplacementsInFiles(const FilesAsked& asked, const Question& question,
                                const std::function<void(FileReplacements file)>& part)
{
    const FilesQuery query = QueryOf(asked, question);
    return Search(query, asked, question, [&](FoundInFile found) {
        part({query.root, query.root + "/" + found.path, found.path, found.textSize, found.textHash,
              std::move(found.lines)});
    });
}

} // namespace wren
