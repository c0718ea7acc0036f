#include "catalog/media/entry_list.h"

#include "base/text/wide.h"

namespace kelvo {
namespace {

constexpr struct {
  const wchar_t* letters;
  MediaKind kind;
} kExtensions[] = {
    {L"m3u", MediaKind::kM3u},  {L"pls", MediaKind::kPls},  {L"asx", MediaKind::kAsx},
    {L"wma", MediaKind::kWma},  {L"asf", MediaKind::kWma},  {L"mp3", MediaKind::kMpeg},
    {L"mp2", MediaKind::kMpeg}, {L"mp1", MediaKind::kMpeg}, {L"ogg", MediaKind::kOgg},
};

}  // namespace

MediaKind MediaKindOf(const wchar_t* path) noexcept {
  const size_t length = WideLength(path);
  if (length < 4 || path[length - 4] != L'.') return MediaKind::kNone;
  for (const auto& extension : kExtensions) {
    if (EqualAsciiNoCase(path + length - 3, extension.letters)) return extension.kind;
  }
  return MediaKind::kNone;
}

}  // namespace kelvo
