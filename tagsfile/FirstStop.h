// Finds where the names of two lines of a tags file begin to differ.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tagsfile {

constexpr size_t kGlance = 32;

// The place of the first byte that differs, or at which the first line's name ends with a tab or a line break. Looks at
// the first kGlance bytes, all of which must be readable; returns kGlance when there is no such place.
inline size_t FirstStopByBytes(const char* previous, const char* line)
{
    size_t place = 0;
    while (place < kGlance && previous[place] == line[place] && previous[place] != '\t' && previous[place] != '\n')
        ++place;
    return place;
}

#if defined(__SSE2__)
// One bit for each of 16 bytes.
inline uint32_t StopsIn(const char* previous, const char* line)
{
    const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(previous));
    const __m128i behind = _mm_loadu_si128(reinterpret_cast<const __m128i*>(line));
    const __m128i ends =
        _mm_or_si128(_mm_cmpeq_epi8(before, _mm_set1_epi8('\t')), _mm_cmpeq_epi8(before, _mm_set1_epi8('\n')));
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_andnot_si128(ends, _mm_cmpeq_epi8(before, behind)))) ^ 0xffff;
}
#endif

// The same. The place is unpredictable, so a branch on each byte would take longer than comparing all bytes at once.
inline size_t FirstStop(const char* previous, const char* line)
{
#if defined(__SSE2__)
    return static_cast<size_t>(std::countr_zero(StopsIn(previous, line) | StopsIn(previous + 16, line + 16) << 16));
#else
    return FirstStopByBytes(previous, line);
#endif
}

} // namespace tagsfile
