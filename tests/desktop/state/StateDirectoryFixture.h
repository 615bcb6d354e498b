// A home directory of the test's own.
#pragma once

#include "tests/support/TempDirectory.h"

#include <cstdlib>
#include <gtest/gtest.h>

class StateDirectoryFixture : public ::testing::Test {
protected:
    StateDirectoryFixture()
    {
        ::setenv("HOME", home.Path().c_str(), 1);
        ::unsetenv("XDG_STATE_HOME");
    }
    std::string InState(const std::string& leaf) const { return (home / ".local/state/wren/") + leaf; }

    const TempDirectory home;
};
