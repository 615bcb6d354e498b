// Shows the progress of the work to the user, on standard error.
#pragma once

#include "base/ProgressLine.h"
#include "tagging/Observer.h"

#include <cstddef>
#include <string>

namespace cplustags {

// On a terminal, a line shows the progress, with messages above it; otherwise there are only messages. Any thread.
class Progress final : public tagging::Observer {
public:
    explicit Progress(int descriptor) : line(descriptor) {}

    void Say(const std::string& message) override { line.Say("cplustags: " + message + "\n"); }

    // Redraws the line when it is due. 'known' is the number of files known so far.
    void Show(size_t done, size_t known) override;
    void Erase() { line.Erase(); }

private:
    base::ProgressLine line;
};

using base::ProgressText;

} // namespace cplustags
