#pragma once

namespace kelvo {

// The genres of ID3v1 tags, by their number: the first 80 of the format and the extensions that
// became common.
inline constexpr unsigned kGenreCount = 148;

// Empty text for numbers without a name.
const char* GenreName(unsigned number) noexcept;

}  // namespace kelvo
