// A second reader of tags files: step by step, each line alike, without shortcuts. The real one must find the same.
#pragma once

#include "tags/NameAndQualifier.h"
#include "tests/tags/TagsFolder.h"
#include "vetch/storage/BDirectory.h"
#include "vetch/support/ShellEscape.h"

#include <cstdio>
#include <cstring>
#include <string>

enum class LiteralMatch { Exact, Partial, Any };

class LiteralTagFile {
public:
    LiteralTagFile(const std::string& path, const std::string& pattern, LiteralMatch match, bool stopAtMismatch)
        : directory(path.substr(0, path.rfind('/')).c_str()), match(match), stopAtMismatch(stopAtMismatch)
    {
        NameAndQualifier::Split(pattern, wantedName, wantedQualifier);
        stream = std::fopen(path.c_str(), "r");
    }
    ~LiteralTagFile() { std::fclose(stream); }

    // All matches, and at the end the reference that remains after false.
    Lines All()
    {
        Lines found;
        while (ReadOne(found)) {
        }
        found.push_back(std::string("left: ") + (left.name == nullptr ? "" : left.name));
        return found;
    }

private:
    bool ReadOne(Lines& found)
    {
        char line[1024];
        if (std::feof(stream) || std::fgets(line, sizeof line, stream) == nullptr)
            return false;
        char* rest;
        char* name = line[0] == '!' ? nullptr : strtok_r(line, "\t", &rest);
        if (name == nullptr)
            return true;
        if (!NameMatches(name))
            return !stopAtMismatch;
        char* file = strtok_r(nullptr, "\t", &rest);
        const BEntry source(&directory, file == nullptr ? nullptr : DeEscaped(file).c_str());
        if (source.InitCheck() != B_OK)
            return true;
        source.GetRef(&left);
        char* position = strtok_r(nullptr, "\t;", &rest);
        int number;
        if (position == nullptr || std::sscanf(position, "%d", &number) != 1)
            return true;
        char* kind = strtok_r(nullptr, "\t;\"", &rest);
        if (kind == nullptr)
            return true;
        const char* scope = strtok_r(nullptr, "\n", &rest);
        std::string qualifier;
        TagFile::SkipClassToken(scope, qualifier);
        if (match != LiteralMatch::Any && !NameAndQualifier::MatchQualifier::Match(wantedQualifier, qualifier.c_str()))
            return true;
        found.push_back(Shown(name, qualifier, kind[0], left, number));
        left = EntryRef(); // each call starts without one
        return true;
    }
    bool NameMatches(const char* name) const
    {
        switch (match) {
        case LiteralMatch::Exact:
            return NameAndQualifier::MatchName::Match(wantedName, name);
        case LiteralMatch::Partial:
            return NameAndQualifier::MatchName::PartialMatch(wantedName, name);
        default:
            return true;
        }
    }

    BDirectory directory;
    LiteralMatch match;
    bool stopAtMismatch;
    std::string wantedName;
    std::string wantedQualifier;
    FILE* stream;
    EntryRef left;
};

// The same with the real reader.
template <class Match>
Lines RealMatches(const std::string& path, const std::string& pattern, Match match, bool stopAtMismatch)
{
    const BEntry tags(path.c_str());
    TagFile file(&tags, pattern, false);
    file.Rewind();
    Lines found;
    std::string name;
    std::string qualifier;
    char kind;
    EntryRef ref;
    int line;
    while (file.NextMatch(name, qualifier, kind, ref, line, stopAtMismatch, match))
        found.push_back(Shown(name, qualifier, kind, ref, line));
    file.Done();
    found.push_back(std::string("left: ") + (ref.name == nullptr ? "" : ref.name));
    return found;
}

inline Lines RealMatches(const std::string& path, const std::string& pattern, LiteralMatch match, bool stopAtMismatch)
{
    switch (match) {
    case LiteralMatch::Exact:
        return RealMatches(path, pattern, TagFile::ExactMatch(), stopAtMismatch);
    case LiteralMatch::Partial:
        return RealMatches(path, pattern, TagFile::PartialMatch(), stopAtMismatch);
    default:
        return RealMatches(path, pattern, TagFile::AnyMatch(), stopAtMismatch);
    }
}
