#include "catalog/tag_editor/tag_edit.h"

#include <string.h>

#include "base/text/ansi.h"
#include "base/text/wide.h"

namespace kelvo {
namespace {

constexpr size_t kTrackCharacters = 2;

template <size_t kCapacity>
void ShowField(const Id3v1Block& tag, const Id3v1Field& field,
               wchar_t (&text)[kCapacity]) noexcept {
  AnsiToWide(reinterpret_cast<const char*>(tag + field.at), field.bytes, text, kCapacity);
}

void PutField(const wchar_t* text, const Id3v1Field& field, Id3v1Block& tag) noexcept {
  WideToAnsi(text, field.bytes, reinterpret_cast<char*>(tag + field.at), field.bytes, nullptr);
}

}  // namespace

void TagEdit::Load(FileSystem& files, const MediaEntry& entry) noexcept {
  memset(bytes_, 0, sizeof(bytes_));
  present_ = false;
  Id3v1Block read;
  if (!entry.tag || !FindId3v1(files, entry.path.c_str(), read)) return;
  memcpy(bytes_, read, sizeof(bytes_));
  for (const Id3v1Field& field :
       {kId3v1Title, kId3v1Artist, kId3v1Album, kId3v1Year, kId3v1ShortComment}) {
    TrimField(reinterpret_cast<char*>(bytes_ + field.at), field.bytes);
  }
  present_ = true;
}

void TagEdit::Show(TagTexts* shown) const noexcept {
  // Up to the mark, which is text where there is no track.
  constexpr Id3v1Field kComment = {kId3v1Comment.at, kId3v1TrackAt - kId3v1Comment.at};
  *shown = TagTexts();
  if (!present_) return;
  ShowField(bytes_, kId3v1Title, shown->title);
  ShowField(bytes_, kId3v1Album, shown->album);
  ShowField(bytes_, kId3v1Artist, shown->artist);
  ShowField(bytes_, kComment, shown->comment);
  ShowField(bytes_, kId3v1Year, shown->year);
  if (bytes_[kId3v1TrackAt] != 0 && bytes_[kId3v1TrackMarkAt] == 0) {
    FormatDecimal(shown->track, bytes_[kId3v1TrackAt]);
  }
}

void TagEdit::Build(const TagTexts& texts, uint32_t genre) noexcept {
  memset(bytes_, 0, sizeof(bytes_));
  bytes_[kId3v1GenreAt] = static_cast<uint8_t>(genre);
  PutField(texts.title, kId3v1Title, bytes_);
  PutField(texts.album, kId3v1Album, bytes_);
  PutField(texts.artist, kId3v1Artist, bytes_);
  PutField(texts.year, kId3v1Year, bytes_);
  wchar_t track[kTrackCharacters + 1];
  const bool has_track = CopyWide(track, kTrackCharacters + 1, texts.track) > 0;
  if (has_track) bytes_[kId3v1TrackAt] = static_cast<uint8_t>(ParseDecimal(track));
  PutField(texts.comment, has_track ? kId3v1ShortComment : kId3v1Comment, bytes_);
}

bool TagEdit::Write(FileSystem& files, const wchar_t* path) noexcept {
  uint32_t attributes;
  if (!files.GetAttributes(path, &attributes)) return false;
  files.SetAttributes(path, kAttributeNormal);
  OpenFile<FileWriter> file = files.OpenWrite(path, Share::kWrite);
  if (!file) return false;
  memcpy(bytes_, kId3v1Mark, sizeof(kId3v1Mark) - 1);
  const bool written =
      file->SeekFromEnd(present_ ? kId3v1Bytes : 0) && file->Write(bytes_, sizeof(bytes_));
  file.Close();
  files.SetAttributes(path, attributes);
  return written;
}

}  // namespace kelvo
