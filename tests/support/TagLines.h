// Lines of tags files, as ctags writes them with line numbers.
#pragma once

#include "tests/support/TempDirectory.h"

#include <string>

// 'scope' is "class:View" or the like; "" for none.
inline std::string TagLine(const std::string& name, const std::string& file, int line, char kind,
                           const std::string& scope = "")
{
    return name + "\t" + file + "\t" + std::to_string(line) + ";\"\t" + kind + (scope.empty() ? "" : "\t" + scope) +
           "\n";
}

// A temporary home directory with the directory of the system's tags file.
class TempHome : public TempDirectory {
public:
    TempHome()
    {
        if (const char* home = std::getenv("HOME"))
            before = home;
        ::setenv("HOME", Path().c_str(), 1);
    }
    ~TempHome()
    {
        if (before.empty())
            ::unsetenv("HOME");
        else
            ::setenv("HOME", before.c_str(), 1);
    }

    std::string WriteSystemTags(const std::string& lines) const
    {
        return Write("Library/Caches/SystemHeaderTags", lines);
    }

private:
    std::string before;
};
