#include "base/Result.h"

#include <gtest/gtest.h>

#include <memory>

namespace base {
namespace {

TEST(Result, HoldsAValueOrAnError)
{
    Result<std::unique_ptr<int>> value = std::make_unique<int>(7);
    ASSERT_TRUE(value);
    EXPECT_EQ(**value, 7);
    const std::unique_ptr<int> taken = std::move(*value);
    EXPECT_EQ(*taken, 7);

    const Result<std::string> error = Error{"cannot read it", ENOENT};
    ASSERT_FALSE(error);
    EXPECT_EQ(error.Failure().number, ENOENT);
}

TEST(Result, OfNothingIsAnErrorOrNone)
{
    EXPECT_TRUE(Result<void>());
    const Result<void> failed = Error{"it failed"};
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.Failure().text, "it failed");
}

TEST(Error, GivesItsReasonBehindItsText)
{
    EXPECT_EQ((Error{"cannot read it", ENOENT}).Message(), "cannot read it: No such file or directory");
    EXPECT_EQ((Error{"it is empty"}).Message(), "it is empty");
    errno = EACCES;
    EXPECT_EQ(SystemError("cannot open it").Message(), "cannot open it: Permission denied");
}

} // namespace
} // namespace base
