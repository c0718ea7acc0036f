#include "playlist/list_entry.h"

#include <string.h>

#include "base/text/ansi.h"

namespace kelvo {
namespace {

bool HasBackslash(const char* text, size_t length) noexcept {
  return memchr(text, '\\', length) != nullptr;
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

void PlsKey::Advance() noexcept {
  if (number_ == INT32_MAX) {
    length_ = 0;
    text_[0] = 0;
    return;
  }
  // Most steps change the last digit only.
  char& last = text_[length_ - 2];
  if (last != '9') {
    ++last;
    ++number_;
  } else {
    Set(number_ + 1);
  }
}

bool FindM3uEntry(const TextLine& line, ListEntry* entry) noexcept {
  if (line.length > 0 && line.text[0] == '#') return false;
  *entry = {line.text, line.length, !HasBackslash(line.text, line.length)};
  return true;
}

bool FindPlsEntry(const TextLine& line, PlsKey* key, ListEntry* entry) noexcept {
  const size_t length = key->length();
  if (length == 0 || line.length < length) return false;
  if (!EqualAsciiNoCase(line.text, key->text(), length)) return false;
  *entry = {line.text + length, line.length - length, false};
  key->Advance();
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

bool ListFolder::Set(const wchar_t* list_path, wchar_t (&resolved)[kTextCapacity]) noexcept {
  length = 0;
  bool lossy = false;
  if (WideLength(list_path) >= kTextCapacity) return false;
  const size_t bytes = WideToAnsi(list_path, kTextCapacity, text, kTextCapacity, &lossy);
  if (lossy || bytes >= kTextCapacity) return false;
  AnsiToWide(text, bytes, resolved, kTextCapacity);
  length = bytes;
  while (length > 0 && text[length - 1] != '\\') --length;
  return true;
}

bool MakeEntryPath(const ListEntry& entry, const ListFolder& folder, wchar_t (&path)[kTextCapacity],
                   size_t* length) noexcept {
  if (!entry.in_folder) {
    *length = AnsiToWide(entry.text, entry.length, path, kTextCapacity);
    return true;
  }
  // Joined before the conversion: the bytes of one character never come apart.
  char joined[kTextCapacity];
  if (folder.length + entry.length >= kTextCapacity) return false;
  memcpy(joined, folder.text, folder.length);
  memcpy(joined + folder.length, entry.text, entry.length);
  *length = AnsiToWide(joined, folder.length + entry.length, path, kTextCapacity);
  return true;
}

}  // namespace kelvo
