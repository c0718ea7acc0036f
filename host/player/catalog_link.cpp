#include "host/player/catalog_link.h"

#include <algorithm>

#include "host/input.h"

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
    left_out_ = static_cast<size_t>(std::count_if(
        paths_.begin(), paths_.end(), [](const auto& chosen) { return !Input::IsMedia(chosen); }));
    if (replace_) player_.Clear();
    player_.Add(paths_);
    replace_ = false;
    paths_.clear();
  }
}

}  // namespace velmora
