#include "catalog/lists/current_playlist.h"

#include <string.h>

#include "base/text/ansi.h"
#include "base/text/wide.h"
#include "catalog/media/entry_list.h"

namespace kelvo {
namespace {

void AnsiColumn(const MediaEntry& entry, PlaylistColumn column,
                char (&text)[kTextCapacity]) noexcept {
  TagField field = {};
  switch (column) {
    case PlaylistColumn::kTitle:
      return TitleText(entry, text);
    case PlaylistColumn::kArtist:
      ArtistText(entry, field);
      break;
    case PlaylistColumn::kAlbum:
      AlbumText(entry, field);
      break;
    case PlaylistColumn::kGenre:
      GenreText(entry, field);
      break;
  }
  memcpy(text, field, sizeof(field));
}

}  // namespace

void RemoveSelected(EntryList& entries, ListSelection& selection) noexcept {
  const size_t count = entries.size();
  size_t kept = 0;
  size_t focused = 0;
  for (size_t at = 0; at < count; ++at) {
    if (at == selection.focused) focused = kept;
    if (selection.selected[at]) continue;
    if (kept != at) entries[kept] = std::move(entries[at]);
    ++kept;
  }
  while (entries.size() > kept) entries.RemoveAt(entries.size() - 1);
  static_cast<void>(selection.selected.Resize(kept));  // never grows
  for (bool& selected : selection.selected) selected = false;
  const bool has_focus = selection.focused < count;
  selection.focused = !has_focus ? kept : focused < kept || kept == 0 ? focused : kept - 1;
}

size_t MoveSelected(EntryList& entries, ListSelection& selection, Direction direction) noexcept {
  const size_t count = entries.size();
  const auto position = [&](size_t step) {
    return direction == Direction::kUp ? step : count - 1 - step;
  };
  size_t foremost = count;
  if (count == 0 || selection.selected[position(0)]) return foremost;
  for (size_t step = 1; step < count; ++step) {
    const size_t from = position(step);
    const size_t to = position(step - 1);
    if (!selection.selected[from]) continue;
    std::swap(entries[from], entries[to]);
    std::swap(selection.selected[from], selection.selected[to]);
    if (selection.focused == from) selection.focused = to;
    if (foremost == count) foremost = to;
  }
  return foremost;
}

void ColumnText(const MediaEntry& entry, PlaylistColumn column,
                wchar_t (&text)[kColumnCapacity]) noexcept {
  char ansi[kTextCapacity];
  AnsiColumn(entry, column, ansi);
  AnsiToWide(ansi, kTextCapacity, text, kColumnCapacity);
}

int CompareEntries(const MediaEntry& a, const MediaEntry& b, const SortState& sort) noexcept {
  wchar_t text_a[kColumnCapacity];
  wchar_t text_b[kColumnCapacity];
  ColumnText(a, static_cast<PlaylistColumn>(sort.column), text_a);
  ColumnText(b, static_cast<PlaylistColumn>(sort.column), text_b);
  return CompareNoCase(text_a, text_b) * sort.direction;
}

void Reorder(EntryList& entries, Array<size_t>& order) noexcept {
  for (size_t i = 0; i < entries.size(); ++i) {
    // Entries before i are in place; what was at order[i] may have been swapped away since.
    size_t from = order[i];
    while (from < i) from = order[from];
    if (from != i) std::swap(entries[i], entries[from]);
    order[i] = from;
  }
}

bool AnyChecked(const EntryList& entries) noexcept {
  for (const MediaEntry& entry : entries) {
    if (entry.item != 0) return true;
  }
  return false;
}

void HandOverEntries(const HostCallback& host, HandOver how, const EntryList& entries) noexcept {
  if (!host.is_set()) return;
  if (how == HandOver::kPlay) host.function(kCatalogClearList, host.cookie);
  for (const MediaEntry& entry : entries) {
    if (entry.item != 0 && entry.path.has_value()) host.function(entry.path.get(), host.cookie);
  }
  host.function(CatalogEndOfList(), host.cookie);
}

}  // namespace kelvo
