#include "tests/generate/InstalledProgram.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>
#include <utility>

std::deque<bool> InstalledProgram::answers;
int InstalledProgram::looks = 0;

void InstalledProgram::Is(std::deque<bool> found)
{
    answers = std::move(found);
    looks = 0;
}

extern "C" {
int __real_stat(const char*, struct stat*);
int __wrap_stat(const char*, struct stat*);
}

int __wrap_stat(const char* path, struct stat* status)
{
    auto& answers = InstalledProgram::answers;
    if (answers.empty() || std::strcmp(path, "/usr/bin/cplustags") != 0)
        return __real_stat(path, status);
    ++InstalledProgram::looks;
    const bool found = answers.front();
    if (answers.size() > 1)
        answers.pop_front();
    errno = found ? 0 : ENOENT;
    return found ? 0 : -1;
}
