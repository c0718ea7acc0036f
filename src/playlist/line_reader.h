#pragma once

#include <stddef.h>
#include <stdint.h>

#include "base/bytes/byte_source.h"

namespace kelvo {

// One line without its line feed, not NUL-terminated; valid until the reader's next call.
struct TextLine {
  const char* text;
  size_t length;   // 0 to kLongestLine, up to the first NUL
  bool continues;  // the rest of the line, perhaps nothing, comes as the next line
};

// Lines of a text file as a C library reads them in text mode with a buffer of 260 bytes: CR LF is
// a line feed, a lone CR is an ordinary character, 0x1A ends the text, and a line of more than 259
// characters is handed out in pieces. 4.4 KB; one thread at a time.
class LineReader {
 public:
  static constexpr size_t kLongestLine = 259;

  // Starts or goes on at `offset`. The source is borrowed; null is an empty text.
  void Start(ByteSource* source, uint64_t offset) noexcept;

  // False at the end. A read that fails ends the text too, and the piece of a line before it is
  // not handed out.
  [[nodiscard]] bool Next(TextLine* line) noexcept;

  // At the end: whether an end-of-text character is the reason, with something behind it.
  bool ended_early() const noexcept { return ended_early_; }

  // Where the next line begins.
  uint64_t offset() const noexcept { return chunk_offset_ + at_; }

 private:
  static constexpr int kEnd = -1;

  bool NextInPieces(TextLine* line) noexcept;
  int Peek() noexcept;
  void Fill() noexcept;

  ByteSource* source_ = nullptr;
  uint64_t chunk_offset_ = 0;
  size_t at_ = 0;  // in the chunk
  size_t end_ = 0;
  bool last_chunk_ = true;
  bool failed_ = false;
  bool ended_early_ = false;
  char line_[kLongestLine];  // a line that does not lie in one chunk
  char chunk_[4096];
};

}  // namespace kelvo
