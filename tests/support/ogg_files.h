// Ogg Vorbis bytes for tests: decoded directly, and rewritten with other comments or positions.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kelvo::test {

// The PCM of a direct decoder loop that starts at `first_frame` (-1: without
// seeking), until the end or an error.
std::vector<char> DecodeDirectly(const std::vector<char>& file, int64_t first_frame = -1);

// The same PCM as it fills buffers of that size one after the other, each until its room is smaller
// than `smallest_room`.
std::vector<std::vector<char>> DecodeIntoBuffers(const std::vector<char>& file, int64_t first_frame,
                                                 size_t buffer_bytes, size_t smallest_room);

// The same stream with these comments ("KEY=value") instead of its own.
std::vector<char> WithComments(const std::vector<char>& file,
                               const std::vector<std::string>& comments, int serial = 77);

// The same stream with every page's position set to 0: its total length reads as 0.
std::vector<char> WithoutLength(const std::vector<char>& file);

// A file that says that length and opens, but is over at once: behind its headers stand the packet
// that every song begins with, which is not heard, and one that is no music.
std::vector<char> WithoutSound(const std::vector<char>& file, int64_t frames);

// The sound of the stream so many times over, in one stream; with another position on its last
// page.
std::vector<char> Repeated(const std::vector<char>& file, int times, int64_t claimed_frames = 0);

// Without its n-th page.
std::vector<char> WithoutPage(const std::vector<char>& file, int page);

}  // namespace kelvo::test
