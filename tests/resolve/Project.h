// A few sources in one text, with the place that is asked about and the answer in them.
#pragma once

#include "resolve/Resolver.h"
#include "symbols/store/Snapshot.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

// "== shape.h\nint $area();\n== main.cpp\nint x = ar|ea();": '|' is the place, '$' stands before the expected name. A
// text without "==" is a file "a.cpp". In a text with '||', the place is written "<|>".
struct Project {
    explicit Project(const std::string& text);

    resolve::Answers Definition() const;
    resolve::Answers Declaration() const;
    resolve::Answers Meanings() const;
    resolve::Candidates Complete() const;
    std::string Explain() const;
    resolve::Resolver Resolver() const;

    std::vector<std::string> expected; // "path:line", in the order of the text
    resolve::Place place;
    std::string placeText;
    symbols::SnapshotPointer snapshot;
    std::map<std::string, std::string> files;
    std::shared_ptr<const resolve::Sources> sources;

private:
    void AddFile(const std::string& path, std::string text);
};

// "path:line how" of each answer.
std::vector<std::string> Lines(const resolve::Answers& answers);
// "" when there is none.
std::string First(const resolve::Answers& answers);

struct ProjectCase {
    const char* why;
    const char* text;
};
void ExpectDefinitions(const std::vector<ProjectCase>& cases);
