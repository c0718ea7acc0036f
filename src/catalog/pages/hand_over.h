#pragma once

#include "catalog/media/entry_list.h"
#include "kelvo/catalog.h"

namespace kelvo {

struct HostCallback {
  CatalogCallback function = nullptr;
  HostWord cookie = 0;
  bool is_set() const noexcept { return function && cookie != 0; }
};

// Tells the host the path of every flagged entry, in order, and the end; for playing, to clear its
// list first. Nothing without a callback or without a cookie.
enum class HandOver { kPlay, kEnqueue };
void HandOverEntries(const HostCallback& host, HandOver how, const EntryList& entries) noexcept;

}  // namespace kelvo
