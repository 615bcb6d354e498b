// Root may read, write and give away all files: tests of refused access drop these rights for a while.
#pragma once

#include <gtest/gtest.h>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

// While one lives, permissions bind its thread as they bind ordinary users. The user does not change, so its own files
// stay accessible, also below a directory of root's. Programs that it starts have all rights again.
class OrdinaryRights {
public:
    OrdinaryRights()
    {
        EXPECT_EQ(::syscall(SYS_capget, &header, before), 0);
        Set sets[_LINUX_CAPABILITY_U32S_3] = {before[0], before[1]};
        for (const unsigned right : {CAP_CHOWN, CAP_DAC_OVERRIDE, CAP_DAC_READ_SEARCH, CAP_FOWNER})
            sets[CAP_TO_INDEX(right)].effective &= ~CAP_TO_MASK(right);
        EXPECT_EQ(::syscall(SYS_capset, &header, sets), 0);
    }
    ~OrdinaryRights() { EXPECT_EQ(::syscall(SYS_capset, &header, before), 0); }
    OrdinaryRights(const OrdinaryRights&) = delete;
    OrdinaryRights& operator=(const OrdinaryRights&) = delete;

private:
    using Set = struct __user_cap_data_struct;
    struct __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    Set before[_LINUX_CAPABILITY_U32S_3] = {};
};
