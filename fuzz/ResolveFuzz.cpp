// Asks what the names of any text mean: all answers come, and are inside of their texts.
//
// The first "|" of the text is the place, and is removed; the first line is the name of the file.
#include "fuzz/Require.h"
#include "resolve/Resolver.h"
#include "symbols/store/Store.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <map>
#include <string>

namespace {

const std::map<std::string, std::string> kProject = {
    {"shape.h", "#pragma once\n#include <vector>\nnamespace geo {\nclass Shape : public Base<int> {\npublic:\n"
                "    virtual double Area() const = 0;\n    Shape* Next(int count = 1);\n    std::vector<Shape> parts;\n"
                "    Shape* operator->();\n};\nstruct Circle : Shape { double Area() const override; int radius; };\n"
                "using Shapes = std::vector<Circle>;\ntypedef Circle Round;\n}\n"},
    {"shape.cpp", "#include \"shape.h\"\nusing namespace geo;\ndouble Circle::Area() const { return radius; }\n"
                  "static int helper(int a) { return a; }\nint helper(int a, int b) { return helper(a) + b; }\n"},
    {"list.c", "struct list { struct list *next; int value; };\n#define EACH(l) for (; l; l = l->next)\n"
               "int sum(struct list *l) { int s = 0; EACH(l) s += l->value; return s; }\n"},
    {"view.m", "#import \"view.h\"\n@interface View : NSObject <Drawing>\n@property View *parent;\n"
               "- (View *)viewAt:(int)x y:(int)y;\n+ (id)alloc;\n@end\n@implementation View\n"
               "- (View *)viewAt:(int)x y:(int)y { return [self.parent viewAt:x y:y]; }\n@end\n"},
};

tagging::Settings Ctags()
{
    tagging::Settings settings;
    settings.ctags.program = "/usr/bin/ctags-universal";
    settings.ctags.directory = settings.ctags.temporaries = "/tmp";
    settings.ctags.prototypes = true;
    return settings;
}

class Project : public resolve::Sources {
public:
    Project()
    {
        std::signal(SIGPIPE, SIG_IGN);
        const auto writer = symbols::WriteInMemory(nullptr, [this](symbols::SnapshotPointer made) { snapshot = made; });
        for (const auto& [path, text] : kProject) {
            const auto parsed = parser.Parse("/tree/" + path, text, tagging::TextParser::Locals::No);
            Require(static_cast<bool>(parsed), "ctags reads the project");
            writer->Put(path, {}, **parsed);
        }
        Require(writer->Commit() && snapshot != nullptr && !snapshot->ByName("Circle", {}).found.empty(),
                "the project has an index");
    }

    std::optional<std::string> Read(const std::string& path) const override
    {
        const auto found = kProject.find(path);
        return found == kProject.end() ? std::nullopt : std::optional(found->second);
    }

    tagging::TextParser parser{Ctags()};
    symbols::SnapshotPointer snapshot;
};

void RequireAnswers(const resolve::Answers& answers, size_t limit)
{
    Require(answers.found.size() <= limit, "there are no more answers than wanted");
    for (const resolve::Answer& answer : answers.found)
        Require(!answer.path.empty() && !resolve::NameOf(answer.how).empty(), "an answer has a file and a reason");
}

void RequireUses(const resolve::Uses& uses, size_t limit)
{
    Require(uses.found.size() <= limit, "there are no more uses than wanted");
    for (const resolve::Use& use : uses.found)
        Require(use.line > 0 && use.column > 0, "lines and columns count from 1");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static Project project;
    std::string text(reinterpret_cast<const char*>(data), size);
    const size_t line = std::min(text.find('\n'), text.size());
    std::string path = text.substr(0, line);
    text.erase(0, std::min(line + 1, text.size()));
    const size_t offset = std::min(text.find('|'), text.size());
    if (offset < text.size())
        text.erase(offset, 1);
    if (path.empty() || path.find('\0') != std::string::npos)
        path = "shape.cpp";

    const resolve::Resolver resolver(*project.snapshot, project, project.parser);
    const resolve::Place place = {.path = path, .text = text, .offset = offset};
    constexpr size_t kMost = 20;
    const symbols::Limits limits = {.results = kMost};
    RequireAnswers(resolver.Definition(place, limits), kMost);
    RequireAnswers(resolver.Declaration(place, limits), kMost);
    RequireAnswers(resolver.Implementations(place, limits), kMost);
    RequireUses(resolver.References(place, limits), kMost);
    const resolve::Candidates candidates = resolver.Complete(place, limits);
    Require(candidates.found.size() <= kMost && candidates.start <= offset, "completion begins before the place");
    Require(!resolver.Explain(place).empty(), "there is an explanation");
    return 0;
}
