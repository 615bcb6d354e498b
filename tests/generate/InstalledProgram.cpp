#include "tests/generate/InstalledProgram.h"

#include "generate/CreateTags.h"

#include <gtest/gtest.h>
#include <utility>

std::deque<bool> InstalledProgram::answers;
int InstalledProgram::looks = 0;

InstalledProgram::InstalledProgram()
{
    Is({false});
    gTagsActions.exists = [](const char* path) {
        EXPECT_STREQ(path, "/usr/bin/cplustags");
        ++looks;
        const bool found = answers.front();
        if (answers.size() > 1)
            answers.pop_front();
        return found;
    };
}

InstalledProgram::~InstalledProgram()
{
    gTagsActions.exists = machines;
}

void InstalledProgram::Is(std::deque<bool> found)
{
    answers = std::move(found);
    looks = 0;
}
