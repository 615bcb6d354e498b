#include "wren/cli/symbols/AskedPlace.h"

#include "base/Identifier.h"
#include "resolve/Tokens.h"
#include "tagging/ParsedSource.h"
#include "wren/cli/CommandSupport.h"
#include "wren/cli/symbols/SymbolWords.h"
#include "wren/core/Documents.h"
#include "wren/text/Place.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace wren {

namespace {

namespace fs = std::filesystem;

// Absolute, without links on the way to the file, as in indexes.
std::string PathOfFile(const std::string& file)
{
    const fs::path path = fs::absolute(file);
    std::error_code unknown;
    const fs::path directory = fs::canonical(path.parent_path(), unknown);
    return unknown ? path : directory / path.filename();
}

bool HasText(const symbols::Snapshot& snapshot, const std::string& path, const std::string& text)
{
    const std::optional<symbols::FileNumber> file = snapshot.FindFile(path);
    return file && snapshot.FileOf(*file).contentHash == tagging::ContentHash(text);
}

size_t NextIdentifier(std::string_view text, size_t offset)
{
    while (offset < text.size() && text[offset] != '\n' && !base::IsIdentifierStart(text[offset]))
        ++offset;
    return offset;
}

// From the first identifier of a line on: the first one that means something. Keywords do not, nor does "define".
size_t FirstName(std::string_view text, size_t first)
{
    size_t offset = first;
    while (offset < text.size() && base::IsIdentifierStart(text[offset])) {
        size_t end = offset;
        while (end < text.size() && base::IsIdentifierCharacter(text[end]))
            ++end;
        const std::string_view word = text.substr(offset, end - offset);
        if (!resolve::IsKeyword(word) && word != "define" && word != "undef" && word != "ifdef" && word != "ifndef")
            return offset;
        offset = NextIdentifier(text, end);
    }
    return first;
}

} // namespace

base::Result<std::unique_ptr<AskedPlace>> AskedPlace::At(const std::string& words, CurrentIndexes& indexes)
{
    std::string error;
    const std::optional<wren::Place> place = ParsePlace(words, &error);
    if (!place)
        return base::Error{error};
    const std::string file = PathOfFile(place->file);
    std::optional<std::string> text = ReadWholeFile(file, &error);
    if (!text)
        return base::Error{error};
    const std::optional<long> offset = OffsetOf(*place, WithoutColumn::FirstIdentifier, *text, &error);
    if (!offset)
        return base::Error{error};
    const base::Result<CurrentIndex*> index = indexes.ForFile(file);
    if (!index)
        return index.Failure();
    size_t start = static_cast<size_t>(*offset);
    if (place->column == 0)
        start = FirstName(*text, start);
    return std::unique_ptr<AskedPlace>(new AskedPlace(**index, file, *std::move(text), start));
}

AskedPlace::AskedPlace(CurrentIndex& index, const std::string& absolute, std::string content, size_t offset)
    : workspace(index.Workspace()), texts(index.ParsedTexts()), sources(workspace),
      path(workspace.PathInIndex(absolute)), text(std::move(content)), offset(offset), snapshot(workspace.Current())
{
    if (HasText(*snapshot, path, text))
        return;
    if (const base::Result<void> parsed = workspace.SetOpenText(absolute, text); !parsed)
        Complain(parsed.Failure().Message());
    snapshot = workspace.Current();
}

resolve::Resolver AskedPlace::Resolver() const
{
    return {*snapshot, sources, workspace.Parser(), &texts};
}

std::string AskedPlace::Name() const
{
    return Resolver().Meanings(Place(), {1}).name;
}

resolve::Place AskedPlace::Place() const
{
    return {path, text, offset};
}

} // namespace wren
