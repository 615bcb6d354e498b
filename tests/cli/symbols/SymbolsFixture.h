// Runs the commands about symbols as a user does, on a small project with its own cache.
#pragma once

#include "tests/support/RunProgram.h"
#include "tests/support/ShellWord.h"
#include "tests/support/TempDirectory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

class SymbolCommands : public ::testing::Test {
protected:
    SymbolCommands()
    {
        tree.Write("home/.keep", "");
        tree.Write("project/.wren", "");
        tree.Write("project/shape.h", "#pragma once\n"
                                      "struct Shape {\n"
                                      "    virtual int Area() const;\n"
                                      "    int side = 0;\n"
                                      "};\n"
                                      "struct Square : Shape {\n"
                                      "    int Area() const override;\n"
                                      "};\n");
        tree.Write("project/shape.cpp", "#include \"shape.h\"\n"
                                        "\n"
                                        "int Shape::Area() const\n"
                                        "{\n"
                                        "    return side;\n"
                                        "}\n");
        tree.Write("project/main.cpp", "#include \"shape.h\"\n"
                                       "\n"
                                       "static int Twice(int number) { return 2 * number; }\n"
                                       "\n"
                                       "int main()\n"
                                       "{\n"
                                       "    Shape shape;\n"
                                       "    return Twice(shape.Area()); // Area\n"
                                       "}\n");
    }

    std::map<std::string, std::string> Environment() const
    {
        return {{"HOME", tree / "home"}, {"XDG_CACHE_HOME", tree / "cache"}};
    }

    std::vector<std::string> Command(const std::vector<std::string>& words) const
    {
        std::vector<std::string> command{WREN_PROGRAM};
        command.insert(command.end(), words.begin(), words.end());
        return command;
    }

    ProgramRun Run(const std::vector<std::string>& words) const
    {
        return RunProgram(Command(words), tree / "project", Environment());
    }

    // The program gets this text as its input.
    ProgramRun RunOn(const std::string& input, const std::vector<std::string>& words) const
    {
        std::vector<std::string> command = {"/bin/sh", "-c", "exec \"$@\" <" + ShellWord(tree.Write("input", input)),
                                            "sh", WREN_PROGRAM};
        command.insert(command.end(), words.begin(), words.end());
        return RunProgram(command, tree / "project", Environment());
    }

    const TempDirectory tree;
};
