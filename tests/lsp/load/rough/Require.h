// What must hold while a server is under load.
#pragma once

#include <iostream>
#include <stdexcept>
#include <string>

inline constexpr bool kIsSanitized = *SANITIZE != '\0'; // a sanitizer keeps freed memory, so it is not measured

inline void Require(bool holds, const std::string& what)
{
    if (!holds)
        throw std::runtime_error("this does not hold: " + what);
}

// Kilobytes.
inline void RequireGrowth(const std::string& what, long before, long after, long most)
{
    std::cout << "  " << what << ": " << before << " kB, then " << after << " kB\n";
    Require(kIsSanitized || after <= before + most, what + " grows by at most " + std::to_string(most) + " kB");
}
