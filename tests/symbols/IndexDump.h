// All that an index says, as a text for comparisons.
#pragma once

#include "symbols/store/Snapshot.h"

#include <sstream>
#include <string>

namespace symbols {

inline void Dump(std::ostream& out, const Symbol& s)
{
    out << "  " << s.line << '-' << s.endLine << ' ' << tagging::LongName(s.kind) << ' ' << s.scope << '|' << s.name
        << '|' << s.type << '|' << s.signature << '|' << s.bases << '|' << s.templateParameters << '|' << s.target
        << '|' << tagging::LongName(s.scopeKind) << int(s.access) << s.isDefinition << s.isFileLocal << s.isStatic
        << s.isScopedEnum << s.isInline << s.isVirtual << s.isSpecialization << '\n';
}

inline std::string DumpOf(const SnapshotPointer& snapshot)
{
    if (snapshot == nullptr)
        return "no index";
    std::ostringstream out;
    snapshot->ForEachFile([&](FileNumber number, const File& file) {
        out << file.path << ' ' << file.contentHash << ' ' << int(file.language) << '\n';
        for (const Symbol& symbol : snapshot->OfFile(number).found)
            Dump(out, symbol);
        for (const Include& include : snapshot->IncludesOf(number))
            out << "  #" << include.line << ' ' << include.name << (include.isAngled ? ">\n" : "\"\n");
        return true;
    });
    return out.str();
}

// Also by name and by mention: "name: path:line, ... in path, ...".
inline std::string AnswerFor(const SnapshotPointer& snapshot, std::string_view name)
{
    std::ostringstream out;
    out << name << ':';
    for (const Symbol& symbol : snapshot->ByName(name, {}).found)
        out << ' ' << snapshot->FileOf(symbol.file).path << ':' << symbol.line;
    out << " in";
    for (const FileNumber file : snapshot->FilesMentioning(name, {}))
        out << ' ' << snapshot->FileOf(file).path;
    return out.str();
}

} // namespace symbols
