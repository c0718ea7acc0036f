#include "playlist/line_reader.h"

#include <string.h>

namespace kelvo {
namespace {

constexpr char kEndOfText = 0x1A;

void CutAtNul(TextLine* line) noexcept {
  const void* nul = memchr(line->text, 0, line->length);
  if (nul) line->length = static_cast<size_t>(static_cast<const char*>(nul) - line->text);
}

}  // namespace

void LineReader::Start(ByteSource* source, uint64_t offset) noexcept {
  source_ = source;
  chunk_offset_ = offset;
  at_ = end_ = 0;
  last_chunk_ = source == nullptr;
  failed_ = ended_early_ = false;
}

void LineReader::Fill() noexcept {
  chunk_offset_ += end_;
  at_ = end_ = 0;
  if (last_chunk_) return;
  size_t got = 0;
  if (source_->ReadSome(chunk_offset_, chunk_, sizeof(chunk_), &got) != ReadResult::kOk) {
    failed_ = last_chunk_ = true;
    return;
  }
  const void* end = memchr(chunk_, kEndOfText, got);
  end_ = end ? static_cast<size_t>(static_cast<const char*>(end) - chunk_) : got;
  last_chunk_ = end || got == 0;
  ended_early_ = end && chunk_offset_ + end_ + 1 < source_->SizeBytes();
}

int LineReader::Peek() noexcept {
  if (at_ == end_) Fill();
  return at_ == end_ ? kEnd : static_cast<unsigned char>(chunk_[at_]);
}

bool LineReader::Next(TextLine* line) noexcept {
  const size_t left = end_ - at_;
  const char* text = chunk_ + at_;
  const void* feed = memchr(text, '\n', left < kLongestLine ? left : kLongestLine);
  if (!feed) return NextInPieces(line);
  size_t length = static_cast<size_t>(static_cast<const char*>(feed) - text);
  at_ += length + 1;
  if (length > 0 && text[length - 1] == '\r') --length;
  *line = {text, length, false};
  CutAtNul(line);
  return true;
}

bool LineReader::NextInPieces(TextLine* line) noexcept {
  size_t length = 0;
  bool ended = false;
  while (length < kLongestLine) {
    const int c = Peek();
    if (failed_) return false;
    if (c == kEnd) {
      if (length == 0) return false;
      ended = true;
      break;
    }
    ++at_;
    if (c == '\n' || (c == '\r' && Peek() == '\n')) {
      if (c == '\r') ++at_;
      ended = true;
      break;
    }
    line_[length++] = static_cast<char>(c);
  }
  *line = {line_, length, !ended};
  CutAtNul(line);
  return true;
}

}  // namespace kelvo
