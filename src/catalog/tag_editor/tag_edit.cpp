#include "catalog/tag_editor/tag_edit.h"

#include <string.h>

#include "base/text/ansi.h"
#include "base/text/wide.h"

namespace kelvo {
namespace {

// Offsets and sizes in bytes.
constexpr size_t kTitleAt = 3;
constexpr size_t kArtistAt = 33;
constexpr size_t kAlbumAt = 63;
constexpr size_t kTextBytes = 30;
constexpr size_t kYearAt = 93;
constexpr size_t kYearBytes = 4;
constexpr size_t kCommentAt = 97;
constexpr size_t kShortCommentBytes = 28;  // in front of a track
constexpr size_t kTrackMarkAt = 125;       // zero: the next byte is a track
constexpr size_t kTrackAt = 126;
constexpr size_t kTrackCharacters = 2;
constexpr size_t kGenreAt = 127;

bool ReadTag(FileSystem& files, const wchar_t* path, uint8_t (&bytes)[kId3v1Bytes]) noexcept {
  OpenFile<FileReader> file = files.OpenRead(path, Share::kRead);
  if (!file) return false;
  const uint64_t size = file->SizeBytes();
  return size >= kId3v1Bytes &&
         file->ReadAt(size - kId3v1Bytes, bytes, kId3v1Bytes) == ReadResult::kOk &&
         memcmp(bytes, "TAG", 3) == 0;
}

template <size_t kCapacity>
void ShowField(const uint8_t* bytes, size_t length, wchar_t (&text)[kCapacity]) noexcept {
  AnsiToWide(reinterpret_cast<const char*>(bytes), length, text, kCapacity);
}

void PutField(const wchar_t* text, uint8_t* bytes, size_t length) noexcept {
  WideToAnsi(text, length, reinterpret_cast<char*>(bytes), length, nullptr);
}

}  // namespace

void TagEdit::Load(FileSystem& files, const MediaEntry& entry) noexcept {
  memset(bytes_, 0, sizeof(bytes_));
  present_ = false;
  uint8_t read[kId3v1Bytes];
  if (!entry.tag || !ReadTag(files, entry.path.c_str(), read)) return;
  memcpy(bytes_, read, sizeof(bytes_));
  char* text = reinterpret_cast<char*>(bytes_);
  TrimField(text + kYearAt, kYearBytes);
  TrimField(text + kTitleAt, kTextBytes);
  TrimField(text + kAlbumAt, kTextBytes);
  TrimField(text + kArtistAt, kTextBytes);
  TrimField(text + kCommentAt, kShortCommentBytes);
  present_ = true;
}

void TagEdit::Show(TagTexts* shown) const noexcept {
  *shown = TagTexts();
  if (!present_) return;
  ShowField(bytes_ + kTitleAt, kTextBytes, shown->title);
  ShowField(bytes_ + kAlbumAt, kTextBytes, shown->album);
  ShowField(bytes_ + kArtistAt, kTextBytes, shown->artist);
  ShowField(bytes_ + kCommentAt, kShortCommentBytes + 1, shown->comment);
  ShowField(bytes_ + kYearAt, kYearBytes, shown->year);
  if (bytes_[kTrackAt] != 0 && bytes_[kTrackMarkAt] == 0) {
    FormatDecimal(shown->track, bytes_[kTrackAt]);
  }
}

void TagEdit::Build(const TagTexts& texts, uint32_t genre) noexcept {
  memset(bytes_, 0, sizeof(bytes_));
  bytes_[kGenreAt] = static_cast<uint8_t>(genre);
  PutField(texts.title, bytes_ + kTitleAt, kTextBytes);
  PutField(texts.album, bytes_ + kAlbumAt, kTextBytes);
  PutField(texts.artist, bytes_ + kArtistAt, kTextBytes);
  PutField(texts.year, bytes_ + kYearAt, kYearBytes);
  wchar_t track[kTrackCharacters + 1];
  const bool has_track = CopyWide(track, kTrackCharacters + 1, texts.track) > 0;
  if (has_track) bytes_[kTrackAt] = static_cast<uint8_t>(ParseDecimal(track));
  PutField(texts.comment, bytes_ + kCommentAt, has_track ? kShortCommentBytes : kTextBytes);
}

bool TagEdit::Write(FileSystem& files, const wchar_t* path) noexcept {
  uint32_t attributes;
  if (!files.GetAttributes(path, &attributes)) return false;
  files.SetAttributes(path, kAttributeNormal);
  OpenFile<FileWriter> file = files.OpenWrite(path, Share::kWrite);
  if (!file) return false;
  memcpy(bytes_, "TAG", 3);
  const bool written =
      file->SeekFromEnd(present_ ? kId3v1Bytes : 0) && file->Write(bytes_, sizeof(bytes_));
  file.Close();
  files.SetAttributes(path, attributes);
  return written;
}

}  // namespace kelvo
