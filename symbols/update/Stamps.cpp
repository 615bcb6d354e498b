#include "symbols/update/Stamps.h"

#include <ctime>

namespace symbols {

bool IsYoung(const tagging::FileStamp& stamp)
{
    constexpr std::int64_t kSecond = 1'000'000'000;
    timespec now;
    ::clock_gettime(CLOCK_REALTIME, &now);
    const std::int64_t age = now.tv_sec * kSecond + now.tv_nsec - stamp.modified;
    // A time far enough in the future is not young: a change would set another time.
    return age < 3 * kSecond && age > -3 * kSecond;
}

tagging::FileStamp StampToKeep(const tagging::FileStamp& stamp)
{
    return IsYoung(stamp) ? tagging::FileStamp{stamp.size, 0, 0} : stamp;
}

} // namespace symbols
