// Where two lines of a tags file stop having the same name.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace tagsfile {

constexpr size_t kGlance = 32;

// The place of the first byte that differs in the two, or at which the first one's name ends, with a tab or a line
// break: among their first kGlance bytes, all of which must be there. kGlance when there is none.
inline size_t FirstStopByBytes(const char* previous, const char* line)
{
    size_t place = 0;
    while (place < kGlance && previous[place] == line[place] && previous[place] != '\t' && previous[place] != '\n')
        ++place;
    return place;
}

#if defined(__SSE2__)
// A bit for each of 16 bytes.
inline uint32_t StopsIn(const char* previous, const char* line)
{
    const __m128i before = _mm_loadu_si128(reinterpret_cast<const __m128i*>(previous));
    const __m128i behind = _mm_loadu_si128(reinterpret_cast<const __m128i*>(line));
    const __m128i ends =
        _mm_or_si128(_mm_cmpeq_epi8(before, _mm_set1_epi8('\t')), _mm_cmpeq_epi8(before, _mm_set1_epi8('\n')));
    return static_cast<uint32_t>(_mm_movemask_epi8(_mm_andnot_si128(ends, _mm_cmpeq_epi8(before, behind)))) ^ 0xffff;
}
#endif

// The same. Where lines stop cannot be foreseen, so that to branch on it takes longer than to look at all bytes at
// once.
inline size_t FirstStop(const char* previous, const char* line)
{
#if defined(__SSE2__)
    return static_cast<size_t>(std::countr_zero(StopsIn(previous, line) | StopsIn(previous + 16, line + 16) << 16));
#else
    return FirstStopByBytes(previous, line);
#endif
}

} // namespace tagsfile
