#include "cplustags/Progress.h"

namespace cplustags {

void Progress::Show(size_t done, size_t known)
{
    line.Show([&](double seconds) { return ProgressText(done, known, seconds); });
}

} // namespace cplustags
