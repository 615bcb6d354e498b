// Random changes of a tree: an index that was updated after some of them answers as one that was made from nothing.
#include "tests/support/OrdinaryRights.h"
#include "tests/symbols/robust/History.h"

#include <gtest/gtest.h>

namespace {

TEST(IndexHistory, AnUpdatedIndexOfADirectoryAnswersAsAFreshOne)
{
    const OrdinaryRights rights;
    EXPECT_EQ(PlayHistory({.seed = 11, .steps = 150, .files = 20, .withGit = false}), "");
}

TEST(IndexHistory, AnUpdatedIndexOfAGitTreeAnswersAsAFreshOne)
{
    const OrdinaryRights rights;
    EXPECT_EQ(PlayHistory({.seed = 12, .steps = 150, .files = 20, .withGit = true}), "");
}

} // namespace
