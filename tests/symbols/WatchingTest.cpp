// What is done when the system has too few watches; the rest is told in the stories of Index::Watch().
#include "symbols/Watching.h"

#include "tests/support/TempDirectory.h"

#include <gtest/gtest.h>

namespace symbols {

TEST(KeepCurrent, WalksAgainAndAgainWhereWatchesRunOut)
{
    const TempDirectory tree;
    tree.Write("in/a.c", "");
    base::CancelToken cancel;
    WatchedIndex index;
    index.root = tree.Path();
    index.starts = {tree.Path()};
    index.mostWatches = 1;
    index.betweenWalks = std::chrono::milliseconds(1);
    int walks = 0;
    index.updateAll = [&](const EnterDirectory& enters) -> base::Result<UpdateResult> {
        enters(tree.Path());
        enters(tree / "in");
        if (++walks == 3)
            cancel.Cancel();
        return UpdateResult();
    };
    EXPECT_TRUE(KeepCurrent(index, cancel));
    EXPECT_EQ(walks, 3);
}

TEST(KeepCurrent, RetriesAfterAFailure)
{
    const TempDirectory tree;
    base::CancelToken cancel;
    WatchedIndex index;
    index.root = tree.Path();
    index.starts = {tree.Path()};
    index.untilRetry = std::chrono::milliseconds(1);
    int updates = 0;
    int messages = 0;
    index.updateAll = [&](const EnterDirectory& enters) -> base::Result<UpdateResult> {
        enters(tree.Path());
        if (++updates == 1) {
            tree.Write(".wrenignore", "");
            return UpdateResult();
        }
        if (updates < 4)
            return base::Error{"no luck"};
        cancel.Cancel();
        return UpdateResult();
    };
    index.say = [&](const std::string& message) {
        EXPECT_EQ(message, "no luck");
        ++messages;
    };
    EXPECT_TRUE(KeepCurrent(index, cancel));
    EXPECT_EQ(updates, 4);
    EXPECT_EQ(messages, 1) << "the same failure is reported once";
}

} // namespace symbols
