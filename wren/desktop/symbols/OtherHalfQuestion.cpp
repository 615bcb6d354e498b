#include "wren/desktop/symbols/OtherHalfQuestion.h"

#include "wren/desktop/symbols/AskedSubject.h"
#include "wren/symbols/OtherHalf.h"

namespace wren {

std::optional<std::string> OtherHalfOf(const AskedText& asked, const Question& question)
{
    const AskedSubject subject(asked, question);
    const auto exists = [&subject](const std::string& path) { return subject.TextOf(path).has_value(); };
    const std::optional<std::string> other =
        OtherHalfOf({subject.Place().path, subject.Snapshot(), question.cancel, exists});
    return other ? std::optional(subject.AbsolutePath(*other)) : std::nullopt;
}

} // namespace wren
