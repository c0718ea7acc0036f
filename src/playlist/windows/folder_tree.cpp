#include "playlist/windows/folder_tree.h"

#include "kelvo/host_resources.h"
#include "playlist/list_entry.h"

namespace kelvo {
namespace {

// Images.
constexpr int kFolder = 0;
constexpr int kOpenFolder = 1;
constexpr int kPlaylist = 3;

bool MakePattern(wchar_t (&pattern)[kTextCapacity], const wchar_t* folder) noexcept {
  CopyWide(pattern, kTextCapacity, folder);
  return AppendWide(pattern, kTextCapacity, L"\\*.*");
}

class FolderFinder final : public FolderVisitor {
 public:
  bool found = false;
  bool Visit(const FolderEntry& entry) noexcept override {
    found = entry.is_folder();
    return !found;
  }
};

}  // namespace

// One pass over a folder: its folders, or its playlists.
class FolderTree::Filler final : public FolderVisitor {
 public:
  Filler(FolderTree& tree, const wchar_t* folder, HTREEITEM parent, bool folders) noexcept
      : tree_(tree), folder_(folder), parent_(parent), folders_(folders) {}
  int count = 0;

  bool Visit(const FolderEntry& entry) noexcept override {
    if (folders_ && entry.is_folder()) {
      const bool deeper = tree_.HasSubfolder(folder_, entry.name);
      if (tree_.Insert(parent_, entry.name, kFolder, deeper)) ++count;
    } else if (!folders_ && !entry.is_folder() && PlaylistExtension(entry.name) != -1) {
      tree_.Insert(parent_, entry.name, kPlaylist, false);
    }
    return true;
  }

 private:
  FolderTree& tree_;
  const wchar_t* folder_;
  HTREEITEM parent_;
  bool folders_;
};

void FolderTree::Attach(HWND tree, HMODULE host_module) noexcept {
  constexpr int kImages[] = {KELVO_HOST_ICON_FOLDER, KELVO_HOST_ICON_OPEN_FOLDER,
                             KELVO_HOST_ICON_SPARE, KELVO_HOST_ICON_PLAYLIST};
  tree_ = tree;
  images_ = LoadIconList(host_module, kImages, 4);
  constexpr int kStates[] = {KELVO_HOST_ICON_STATE_1, KELVO_HOST_ICON_STATE_2,
                             KELVO_HOST_ICON_STATE_3};
  states_ = LoadIconList(host_module, kStates, 3);
  TreeView_SetImageList(tree_, images_.get(), TVSIL_NORMAL);
  UniqueIconList(TreeView_SetImageList(tree_, states_.get(), TVSIL_STATE));
}

void FolderTree::Detach() noexcept {
  if (!tree_) return;
  TreeView_SetImageList(tree_, nullptr, TVSIL_NORMAL);
  TreeView_SetImageList(tree_, nullptr, TVSIL_STATE);
  images_.Reset();
  states_.Reset();
}

void FolderTree::FillRoot() noexcept {
  const HTREEITEM root = Insert(TVI_ROOT, L"\\", kOpenFolder, true);
  if (!root) return;
  const int folders = Fill(L"", root);
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_STATE;
  item.hItem = root;
  item.state = item.stateMask = TVIS_EXPANDEDONCE;
  SendMessageW(tree_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  // Before the count: without folders the root would not expand, and hide its playlists.
  TreeView_Expand(tree_, root, TVE_EXPAND);
  item.mask = TVIF_HANDLE | TVIF_CHILDREN;
  item.cChildren = folders;
  SendMessageW(tree_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

int FolderTree::Fill(const wchar_t* folder, HTREEITEM parent) noexcept {
  wchar_t pattern[kTextCapacity];
  if (!MakePattern(pattern, folder)) return 0;
  Filler folders(*this, folder, parent, true);
  files_.List(pattern, folders);
  Filler playlists(*this, folder, parent, false);
  files_.List(pattern, playlists);
  return folders.count;
}

bool FolderTree::HasSubfolder(const wchar_t* folder, const wchar_t* name) noexcept {
  wchar_t pattern[kTextCapacity];
  CopyWide(pattern, kTextCapacity, folder);
  if (!AppendWide(pattern, kTextCapacity, L"\\") || !AppendWide(pattern, kTextCapacity, name) ||
      !AppendWide(pattern, kTextCapacity, L"\\*.*")) {
    return false;
  }
  FolderFinder finder;
  files_.List(pattern, finder);
  return finder.found;
}

HTREEITEM FolderTree::Insert(HTREEITEM parent, const wchar_t* text, int image,
                             bool has_children) noexcept {
  TVINSERTSTRUCTW insert = {};
  insert.hParent = parent;
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_CHILDREN;
  insert.item.pszText = const_cast<wchar_t*>(text);  // only read
  insert.item.iImage = insert.item.iSelectedImage = image;
  insert.item.cChildren = has_children;
  const LRESULT node = SendMessageW(tree_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert));
  if (node == 0) return nullptr;
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_PARAM;
  item.hItem = reinterpret_cast<HTREEITEM>(node);
  item.lParam = node;
  SendMessageW(tree_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  return item.hItem;
}

void FolderTree::Expanding(HTREEITEM node, bool expands) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_STATE;
  item.hItem = node;
  item.stateMask = TVIS_EXPANDEDONCE;
  SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  if (expands && (item.state & TVIS_EXPANDEDONCE) == 0) {
    wchar_t folder[kTextCapacity];
    if (FolderPathOf(*this, reinterpret_cast<uintptr_t>(node), folder)) Fill(folder, node);
    item.state = item.stateMask = TVIS_EXPANDEDONCE;
    SendMessageW(tree_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  }
  SetImage(node, expands ? kOpenFolder : kFolder);
}

void FolderTree::SetImage(HTREEITEM node, int image) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_IMAGE | TVIF_SELECTEDIMAGE;
  item.hItem = node;
  item.iImage = item.iSelectedImage = image;
  SendMessageW(tree_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

HTREEITEM FolderTree::HitTest(POINT at) noexcept {
  TVHITTESTINFO hit = {};
  hit.pt = at;
  ScreenToClient(tree_, &hit.pt);
  SendMessageW(tree_, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  return (hit.flags & TVHT_ONITEM) != 0 ? hit.hItem : nullptr;
}

bool FolderTree::IsFolder(HTREEITEM node) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_IMAGE;
  item.hItem = node;
  SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  return item.iImage == kFolder || item.iImage == kOpenFolder;
}

uintptr_t FolderTree::Parent(uintptr_t item) noexcept {
  return static_cast<uintptr_t>(
      SendMessageW(tree_, TVM_GETNEXTITEM, TVGN_PARENT, static_cast<LPARAM>(item)));
}

void FolderTree::Text(uintptr_t node, wchar_t (&text)[kTextCapacity]) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_TEXT;
  item.hItem = reinterpret_cast<HTREEITEM>(node);
  item.pszText = text;
  item.cchTextMax = kTextCapacity;
  text[0] = 0;
  SendMessageW(tree_, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

}  // namespace kelvo
