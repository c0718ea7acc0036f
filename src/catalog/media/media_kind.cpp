#include "catalog/media/media_kind.h"

#include "base/text/wide.h"

namespace kelvo {
namespace {

struct Extension {
  wchar_t letters[4];
  MediaKind kind;
};

constexpr Extension kExtensions[] = {
    {L"m3u", MediaKind::kM3u},  {L"pls", MediaKind::kPls},  {L"asx", MediaKind::kAsx},
    {L"wma", MediaKind::kWma},  {L"asf", MediaKind::kWma},  {L"mp3", MediaKind::kMpeg},
    {L"mp2", MediaKind::kMpeg}, {L"mp1", MediaKind::kMpeg}, {L"ogg", MediaKind::kOgg},
};

constexpr uint64_t Packed(const wchar_t* letters) noexcept {
  return FoldAscii(letters[0]) | static_cast<uint64_t>(FoldAscii(letters[1])) << 16 |
         static_cast<uint64_t>(FoldAscii(letters[2])) << 32;
}

}  // namespace

MediaKind MediaKindOf(const wchar_t* path) noexcept {
  return MediaKindOf(path, WideLength(path));
}

// Runs for every file of a scan and every line of a playlist.
MediaKind MediaKindOf(const wchar_t* path, size_t length) noexcept {
  if (length < 4 || path[length - 4] != L'.') return MediaKind::kNone;
  const uint64_t letters = Packed(path + length - 3);
  for (const Extension& extension : kExtensions) {
    if (letters == Packed(extension.letters)) return extension.kind;
  }
  return MediaKind::kNone;
}

}  // namespace kelvo
