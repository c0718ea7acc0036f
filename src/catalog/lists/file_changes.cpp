#include "catalog/lists/device_lists.h"

#include "base/memory/array.h"
#include "base/text/wide.h"

namespace kelvo {

void DeleteEntry(EntryList& entries, size_t at) noexcept {
  const size_t last = entries.size() - 1;
  for (size_t i = at; i < last; ++i) entries[i] = std::move(entries[i + 1]);
  entries[last] = MediaEntry();
  if (at == last) return;
  const MediaEntry& twin = entries[last - 1];
  if (!twin.path.has_value() || !entries[last].path.Assign(twin.path.get())) return;
  if (twin.tag) entries[last].tag.Reset(HeapNew<TagBlock>(*twin.tag));
  entries[last].item = twin.item;
}

HeapText RenamedPath(const wchar_t* path, const wchar_t* name) noexcept {
  HeapText renamed;
  Array<wchar_t> text;
  const wchar_t* slash = FindLastWide(path, L'\\');
  const size_t folder = slash ? static_cast<size_t>(slash - path) : 0;
  if (!text.AppendRange(path, folder) || !text.Append(L'\\') ||
      !text.AppendRange(name, WideLength(name)) || !renamed.Assign(text.data(), text.size())) {
    return HeapText();
  }
  return renamed;
}

void CopyTagToPlaylist(const MediaEntry& edited, EntryList& playlist) noexcept {
  if (!edited.tag) return;
  for (MediaEntry& entry : playlist) {
    if (!entry.path.has_value() || !EqualNoCase(entry.path.get(), edited.path.c_str())) {
      continue;
    }
    if (!entry.tag) entry.tag.Reset(HeapNew<TagBlock>());
    if (entry.tag) *entry.tag = *edited.tag;
  }
}

}  // namespace kelvo
