#include "playlist/list_entry.h"

#include <string.h>

#include "base/text/ansi.h"

namespace kelvo {
namespace {

bool HasBackslash(const char* text, size_t length) noexcept {
  return memchr(text, '\\', length) != nullptr && AnsiFolderLength(text, length) > 0;
}

bool FindM3uEntry(const TextLine& line, ListEntry* entry) noexcept {
  if (line.length > 0 && line.text[0] == '#') return false;
  *entry = {line.text, line.length, !HasBackslash(line.text, line.length)};
  return true;
}

bool FindPlsEntry(const TextLine& line, PlsKey* key, ListEntry* entry) noexcept {
  const size_t length = key->length();
  if (line.length < length || !EqualAsciiNoCase(line.text, key->text(), length)) return false;
  *entry = {line.text + length, line.length - length, false};
  key->Set(static_cast<int32_t>(static_cast<uint32_t>(key->number()) + 1));
  return true;
}

bool FindAsxEntry(const TextLine& line, ListEntry* entry) noexcept {
  constexpr char kTag[] = "<REF HREF";
  constexpr size_t kTagLength = sizeof(kTag) - 1;
  const char* const end = line.text + line.length;
  const char* at = line.text;
  const auto find = [end](const char* from, char c) noexcept {
    return static_cast<const char*>(memchr(from, c, static_cast<size_t>(end - from)));
  };
  while ((at = find(at, '<')) != nullptr) {
    if (static_cast<size_t>(end - at) < kTagLength) return false;
    if (EqualAsciiNoCase(at, kTag, kTagLength)) break;
    ++at;
  }
  const char* quote = at ? find(at, '"') : nullptr;
  if (!quote) return false;
  const char* value = quote + 1;
  const char* close = find(value, '"');
  if (!close) return false;
  // A backslash anywhere behind the value's start counts, also behind its end.
  const bool in_folder = !HasBackslash(value, static_cast<size_t>(end - value));
  *entry = {value, static_cast<size_t>(close - value), in_folder};
  return true;
}

}  // namespace

bool ListFormatOf(MediaKind kind, ListFormat* format) noexcept {
  switch (kind) {
    case MediaKind::kM3u:
      *format = ListFormat::kM3u;
      return true;
    case MediaKind::kPls:
      *format = ListFormat::kPls;
      return true;
    case MediaKind::kAsx:
      *format = ListFormat::kAsx;
      return true;
    default:
      return false;
  }
}

int32_t PlaylistExtension(const wchar_t* path) noexcept {
  const MediaKind kind = MediaKindOf(path);
  return kind == MediaKind::kM3u || kind == MediaKind::kPls ? 3 : -1;
}

void PlsKey::Set(int32_t number) noexcept {
  number_ = number;
  char digits[12];
  const size_t count = FormatDecimal(digits, number);
  memcpy(text_, "File", 4);
  memcpy(text_ + 4, digits, count);
  text_[4 + count] = '=';
  text_[5 + count] = 0;
  length_ = static_cast<uint8_t>(5 + count);
}

bool FindEntry(ListFormat format, const TextLine& line, PlsKey* key, ListEntry* entry) noexcept {
  switch (format) {
    case ListFormat::kM3u:
      return FindM3uEntry(line, entry);
    case ListFormat::kPls:
      return FindPlsEntry(line, key, entry);
    case ListFormat::kAsx:
      return FindAsxEntry(line, entry);
  }
  return false;
}

bool ToListPath(const wchar_t* path, ListPath* list) noexcept {
  bool lossy = false;
  if (WideLength(path) >= kTextCapacity) return false;
  const size_t bytes = WideToAnsi(path, kTextCapacity, list->folder, kTextCapacity, &lossy);
  if (lossy || bytes >= kTextCapacity) return false;
  AnsiToWide(list->folder, bytes, list->path, kTextCapacity);
  list->folder_length = AnsiFolderLength(list->folder, bytes);
  return true;
}

bool MakeEntryPath(const ListEntry& entry, const ListPath& list,
                   wchar_t (&path)[kTextCapacity]) noexcept {
  if (!entry.in_folder) {
    AnsiToWide(entry.text, entry.length, path, kTextCapacity);
    return true;
  }
  // Joined before the conversion: the bytes of one character never come apart.
  char joined[kTextCapacity];
  if (list.folder_length + entry.length >= kTextCapacity) return false;
  memcpy(joined, list.folder, list.folder_length);
  memcpy(joined + list.folder_length, entry.text, entry.length);
  AnsiToWide(joined, list.folder_length + entry.length, path, kTextCapacity);
  return true;
}

}  // namespace kelvo
