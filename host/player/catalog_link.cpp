#include "host/player/catalog_link.h"

#include <algorithm>

#include "host/input.h"
#include "host/texts.h"

namespace velmora {

CatalogLink::CatalogLink(kelvo::Catalog* catalog, Player& player, const std::wstring& device)
    : player_(player), catalog_(catalog), drive_(device) {
  if (catalog_) catalog_->SetHostCallback(&OnPath, reinterpret_cast<kelvo::HostWord>(this));
}

CatalogLink::~CatalogLink() {
  if (catalog_) catalog_->SetHostCallback(nullptr, 0);
}

void CatalogLink::Show(HMODULE module, HWND parent) {
  if (available()) catalog_->ShowCatalog(module, parent);
}

void __cdecl CatalogLink::OnPath(const wchar_t* path, kelvo::HostWord cookie) {
  reinterpret_cast<CatalogLink*>(cookie)->TakePath(path);
}

void CatalogLink::TakePath(const wchar_t* path) {
  if (path == kelvo::kCatalogClearList) {
    replace_ = true;
  } else if (path != kelvo::CatalogEndOfList()) {
    paths_.push_back(path);
  } else {
    if (replace_) player_.Clear();
    const size_t before = player_.tracks().size();
    player_.Add(paths_);
    SayAdded(player_.tracks().size() - before);
    replace_ = false;
    paths_.clear();
  }
}

// The catalog lists kinds of files that only the device's player knows.
void CatalogLink::SayAdded(size_t added) {
  const auto other_kinds = std::count_if(
      paths_.begin(), paths_.end(), [](const auto& chosen) { return !Input::IsMedia(chosen); });
  player_.AddNotice(Text(other_kinds > 0 ? TEXT_NOTICE_ADDED_SOME : TEXT_NOTICE_ADDED,
                         {std::to_wstring(added), std::to_wstring(other_kinds)}));
}

}  // namespace velmora
