#include "vetch/app/Traffic.h"

namespace vetch {

Traffic& TheTraffic()
{
    // Never destroyed: a thread may still end while the process does.
    static Traffic* const traffic = new Traffic;
    return *traffic;
}

} // namespace vetch
