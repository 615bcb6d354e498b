// The checksum of an index's files: it detects damage, but not forgery.
#pragma once

#include <cstdint>
#include <string_view>

namespace symbols {

// Any change of up to eight neighbouring bytes changes it for certain. Several gigabytes a second, since each first use
// of a block waits for it.
std::uint64_t Checksum(std::string_view data);

} // namespace symbols
