#include "base/EnvironmentNumber.h"

#include <charconv>
#include <cstdlib>
#include <string>

namespace base {

Result<unsigned> NumberFrom(const char* variable, unsigned most, unsigned otherwise)
{
    const char* text = std::getenv(variable);
    if (text == nullptr || *text == '\0')
        return otherwise;
    const std::string value = text;
    unsigned number = 0;
    const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (error != std::errc() || end != value.data() + value.size() || number < 1 || number > most)
        return Error{std::string(variable) + " is '" + value + "' but must be a number from 1 to " +
                     std::to_string(most)};
    return number;
}

} // namespace base
