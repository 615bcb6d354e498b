#include "wren/script/DeterministicMode.h"

#include "vetch/app/Loop.h"
#include "vetch/support/Clock.h"

namespace wren {

namespace {

constexpr bigtime_t kClockAtStart = 1'000'000;

} // namespace

DeterministicMode::DeterministicMode()
{
    vetch::UseVirtualClock(kClockAtStart);
    vetch::SetTurns(true);
}

DeterministicMode::~DeterministicMode()
{
    vetch::SetTurns(false);
    vetch::UseRealClock();
}

} // namespace wren
