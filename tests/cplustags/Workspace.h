// A directory with sources, in which cplustags runs.
#pragma once

#include "tests/support/RunProgram.h"
#include "tests/support/StandInForCtags.h"
#include "tests/support/TempDirectory.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

class Workspace : public TempDirectory {
public:
    using Words = std::vector<std::string>;
    using Environment = std::map<std::string, std::string>;

    std::string WriteProgram(const std::string& leaf, const std::string& script) const
    {
        const std::string path = Write(leaf, script);
        std::filesystem::permissions(path, std::filesystem::perms(0755));
        return path;
    }

    // From now on this runs in place of ctags.
    void UseStandIn(const std::string& branches)
    {
        environment["CPLUSTAGS_CTAGS"] = WriteProgram("stand-in/ctags", StandInForCtags(branches));
    }

    static Words Command(Words words)
    {
        words.insert(words.begin(), CPLUSTAGS);
        return words;
    }
    ProgramRun Run(const Words& words) const { return RunProgram(Command(words), Path(), environment); }

    std::string Content(const std::string& leaf) const
    {
        std::ifstream file(*this / leaf, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // The tags in the order of the file, with blanks for tabs, without the pseudo-tags.
    Words Tags(const std::string& leaf = "tags") const
    {
        Words lines;
        std::ifstream file(*this / leaf, std::ios::binary);
        for (std::string line; std::getline(file, line);)
            if (line.rfind("!_TAG_", 0) != 0)
                lines.push_back(WithBlanks(line));
        return lines;
    }

    // The value of a pseudo-tag.
    std::string Pseudo(const std::string& name, const std::string& leaf = "tags") const
    {
        const std::string start = "!_TAG_" + name + "\t";
        std::ifstream file(*this / leaf, std::ios::binary);
        for (std::string line; std::getline(file, line);)
            if (line.rfind(start, 0) == 0)
                return line.substr(start.size(), line.find('\t', start.size()) - start.size());
        return "";
    }

    // The entries of a directory, including hidden ones.
    Words Leaves(const std::string& directory = ".") const
    {
        Words leaves;
        for (const auto& entry : std::filesystem::directory_iterator(*this / directory))
            leaves.push_back(entry.path().filename());
        std::sort(leaves.begin(), leaves.end());
        return leaves;
    }

    Environment environment;

private:
    static std::string WithBlanks(std::string line)
    {
        std::replace(line.begin(), line.end(), '\t', ' ');
        return line;
    }
};
