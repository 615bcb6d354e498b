// Command lines really run by a shell, where it would be noticed if they ran anything that they should not.
#pragma once

#include "tests/support/RunProgram.h"
#include "tests/support/TempDirectory.h"
#include "tests/support/WaitLimit.h"

#include <filesystem>
#include <string>
#include <vector>

// The shell finds 'find', 'mv' and 'cat', and besides them only traps: programs that tell when they are run. A stand-in
// for the tags program notes how it is called and makes the file that it is asked for.
class RealShell {
public:
    struct Call {
        std::vector<std::string> arguments;
        std::string input;
    };

    RealShell()
    {
        for (const char* program : {"find", "mv", "cat"})
            std::filesystem::create_symlink(PathOf(program), Directory("bin") + "/" + program);
        for (const char* trap : {"pwned", "touch", "id"})
            WriteProgram("bin/" + std::string(trap), "#!/bin/sh\necho \"${0##*/}${1:+ }$*\" >> \"$RECORDS/trapped\"\n");
        Directory("records");
        Directory("empty");
    }

    // Makes the stand-in at that path, with its directories, and answers the path.
    std::string MakeTagsProgram(const std::string& leaf) const
    {
        return WriteProgram(leaf, "#!/bin/sh\n"
                                  "printf '%s\\0' \"$@\" > \"$RECORDS/arguments\"\n"
                                  "cat > \"$RECORDS/input\"\n"
                                  "while [ $# -gt 0 ]; do [ \"$1\" != -f ] || echo made > \"$2\"; shift; done\n");
    }

    // Runs it as system() would, in an empty directory or the one given. Its status, and all that it said.
    ProgramRun Run(const std::string& command, const std::string& home, const std::string& in = "") const
    {
        const WaitLimit limit("the shell had run its command");
        return RunProgram({"/bin/sh", "-c", command}, in.empty() ? files / "empty" : in,
                          {{"PATH", files / "bin"}, {"RECORDS", files / "records"}, {"HOME", home}});
    }

    // How the stand-in was called last; nothing if it was not.
    Call TakeCall() const
    {
        Call call;
        const std::string arguments = Take("records/arguments");
        for (size_t start = 0; start < arguments.size();) {
            const size_t end = arguments.find('\0', start);
            call.arguments.push_back(arguments.substr(start, end - start));
            start = end + 1;
        }
        call.input = Take("records/input");
        return call;
    }

    // What the traps tell, a line a program; and what appeared in the empty directory.
    std::string TakeTrapped() const { return Take("records/trapped"); }
    bool LeftNothing() const { return std::filesystem::is_empty(files / "empty"); }

    static std::string Content(const std::string& path)
    {
        std::ostringstream text;
        text << std::ifstream(path, std::ios::binary).rdbuf();
        return text.str();
    }

private:
    std::string Directory(const std::string& leaf) const
    {
        std::filesystem::create_directories(files / leaf);
        return files / leaf;
    }
    std::string WriteProgram(const std::string& leaf, const std::string& text) const
    {
        const std::string path = files.Write(leaf, text);
        std::filesystem::permissions(path, std::filesystem::perms::owner_all);
        return path;
    }
    std::string Take(const std::string& leaf) const
    {
        const std::string content = Content(files / leaf);
        std::filesystem::remove(files / leaf);
        return content;
    }
    static std::string PathOf(const std::string& program)
    {
        const std::string path = "/usr/bin/" + program;
        return std::filesystem::exists(path) ? path : "/bin/" + program;
    }

    TempDirectory files;
};
