#pragma once

#include "catalog/windows/catalog_page.h"

namespace kelvo {

// "Curr. Playlist": the files that the user puts together. An item's data is its entry's position,
// its check box the entry's flag.
class CurrentPage final : public CatalogPage {
 public:
  CurrentPage(CatalogState& state, CatalogSheetEvents& events) noexcept;
  void Fill() noexcept;  // nothing while the page is not there

 private:
  void OnPageInit() noexcept override;
  Handled OnCommand(int id, int notification) noexcept override;
  LRESULT OnNotify(const NMHDR& header, LPARAM lparam) noexcept override;

  void InsertColumns() noexcept;
  bool Select(int id) noexcept;  // the commands that change checks and selection
  bool ChangeItems(int id) noexcept;
  void Play() noexcept;
  void Save() noexcept;
  void Edit(int id) noexcept;
  void Sort(int column) noexcept;
  void Renumber() noexcept;
  void UpdateButtons() noexcept;

  bool changing_ = false;  // items are behind their entries: their changes mean nothing
  bool changing_all_ = false;
  wchar_t label_[kColumnCapacity] = {};
};

}  // namespace kelvo
