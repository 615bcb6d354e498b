#include "tests/load/Workspace.h"

#include <set>

namespace {

constexpr size_t kClasses = 40;
constexpr size_t kMembers = 25;
constexpr size_t kFunctions = 800; // of which each has a name of its own
constexpr size_t kSymbolsOfProject = 4000;
constexpr size_t kSymbolsOfSystem = 12000;

const char* const kSyllables[] = {"re",    "al", "set",   "Name", "Of", "Item",
                                  "count", "At", "Index", "draw", "In", "Rect"};

// The same for the same numbers, so that tags and texts meet.
std::string Word(size_t number)
{
    std::string word;
    for (size_t rest = number + 12; rest > 0; rest /= std::size(kSyllables))
        word += kSyllables[rest % std::size(kSyllables)];
    return word;
}

std::string Class(size_t number)
{
    return "C" + Word(number);
}

std::string Selector(size_t number)
{
    return Word(number) + ":" + Word(number + 7) + ":";
}

std::string Line(const std::string& name, const std::string& rest)
{
    return name + "\tsource0.cpp\t" + rest + "\n";
}

std::string MakeTag(size_t kind, const std::string& owner, size_t member)
{
    const std::string line = std::to_string(member + 1) + ";\"\t";
    switch (kind) {
    case 0:
        return Line(owner, line + "c");
    case 1:
        return Line("~" + owner, line + "f\tclass:" + owner);
    case 2:
        return Line(Selector(member), line + "m\tclass:" + owner);
    case 3:
        return Line("operator ==", line + "f\tclass:" + owner);
    case 4:
        return Line(owner + "<int>", line + "c");
    default:
        return Line(Word(member), line + (kind % 2 == 0 ? "p" : "f") + "\tclass:" + owner);
    }
}

std::string Function(size_t number)
{
    return Word(1000 + number);
}

std::string MakeFunction(size_t number)
{
    const std::string line = std::to_string(number) + ";\"\t";
    return Line(Function(number), line + "p") + Line(Function(number), line + "f");
}

} // namespace

Workspace::Workspace(Random& random) : random(random)
{
    files.Write("Library/Caches/SystemHeaderTags", MakeTags(kSymbolsOfSystem));
    for (size_t project = 0; project < kProjects; ++project) {
        for (size_t source = 0; source < kSourcesOfProject; ++source)
            files.Write("project" + std::to_string(project) + "/source" + std::to_string(source) + ".cpp", MakeText());
        WriteTags(project);
    }
}

std::string Workspace::Source(size_t project, size_t source) const
{
    return Project(project) + "/source" + std::to_string(source) + ".cpp";
}

std::string Workspace::MakeText() const
{
    std::string text;
    for (size_t line = 0; line < 30; ++line)
        text += "    " + MakePhrase() + ";\n";
    return text;
}

std::string Workspace::MakePhrase() const
{
    const std::string owner = Class(Pick(random, kClasses));
    const size_t member = Pick(random, kMembers + 5);
    switch (Pick(random, 10)) {
    case 0:
        return owner + "::" + Word(member) + "(1)";
    case 1:
        return "[a " + Word(member) + ":b " + Word(member + 7) + ":c]";
    case 2:
        return "std::vector<" + owner + "> all";
    case 3:
        return owner + "::~" + owner + "()";
    case 4:
        return owner + "::operator ==(b)";
    case 5:
    case 6:
    case 7:
    case 8:
        return Function(Pick(random, kFunctions)) + "()";
    default:
        return "a." + Word(member) + "()";
    }
}

void Workspace::WriteTags(size_t project) const
{
    const std::string made =
        files.Write("project" + std::to_string(project) + "/tags.tmp", MakeTags(kSymbolsOfProject));
    std::filesystem::rename(made, Project(project) + "/tags");
}

std::string Workspace::MakeTags(size_t symbols) const
{
    std::set<std::string> lines; // that a symbol has
    for (size_t symbol = 0; symbol < symbols; ++symbol)
        lines.insert(Once(random, 2)
                         ? MakeFunction(Pick(random, kFunctions))
                         : MakeTag(Pick(random, 10), Class(Pick(random, kClasses)), Pick(random, kMembers)));
    std::string text = "!_TAG_FILE_SORTED\t1\t//\n";
    for (const std::string& line : lines)
        text += line;
    return text;
}
