// Why a ctags process has ended.
#pragma once

#include "base/Result.h"
#include "tagging/ctags/CtagsProcess.h"
#include "tagging/ctags/CtagsSettings.h"

namespace tagging {

// 'status' is that of CtagsProcess::End().

// Whether a mistake of ctags ended it. Signals from outside prove nothing about the source.
bool IsCrash(int status);

// Any other end, with what ctags said last.
base::Error FailureOf(CtagsProcess& process, const CtagsSettings& settings, int status);

} // namespace tagging
