#include "wren/script/Repeatable.h"

#include "vetch/app/Loop.h"
#include "vetch/support/Clock.h"

namespace wren {

namespace {

constexpr bigtime_t kClockAtStart = 1'000'000;

} // namespace

Repeatable::Repeatable()
{
    vetch::UseVirtualClock(kClockAtStart);
    vetch::SetTurns(true);
}

Repeatable::~Repeatable()
{
    vetch::SetTurns(false);
    vetch::UseRealClock();
}

} // namespace wren
