#include "catalog/windows/media_tree.h"

#include "catalog/windows/catalog_page.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

HTREEITEM Item(TreeNode node) noexcept {
  return reinterpret_cast<HTREEITEM>(node);
}

HTREEITEM ParentItem(TreeNode parent) noexcept {
  return parent == kNoNode ? TVI_ROOT : Item(parent);
}

// Files have no data and are equal to everything: they stay where they are.
int CALLBACK CompareFolders(LPARAM a, LPARAM b, LPARAM order) noexcept {
  if (a == 0 || b == 0) return 0;
  return reinterpret_cast<const FolderOrder*>(order)->Compare(static_cast<TreeNode>(a),
                                                              static_cast<TreeNode>(b));
}

bool GetItem(HWND tree, TreeNode node, TVITEMW* item) noexcept {
  item->mask |= TVIF_HANDLE;
  item->hItem = Item(node);
  return SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(item)) != FALSE;
}

}  // namespace

void MediaTree::Attach(HWND tree) noexcept {
  constexpr int kImages[] = {IDI_GENRE, IDI_ALBUM, IDI_ARTIST, IDI_FILE, IDI_FOLDER};
  constexpr int kStates[] = {IDI_NO_STATE, IDI_UNCHECKED, IDI_CHECKED};
  tree_ = tree;
  images_ = LoadIconList(OwnModule(), kImages, 5);
  TreeView_SetImageList(tree_, images_.get(), TVSIL_NORMAL);
  // The control has made a list of its own for its check boxes, and keeps it when memory is out.
  if (UniqueIconList states = LoadIconList(OwnModule(), kStates, 3)) {
    UniqueIconList(TreeView_SetImageList(tree_, states.Release(), TVSIL_STATE));
  }
}

void MediaTree::Detach() noexcept {
  Clear();
  TreeView_SetImageList(tree_, nullptr, TVSIL_NORMAL);
  UniqueIconList(TreeView_SetImageList(tree_, nullptr, TVSIL_STATE));
  images_.Reset();
  tree_ = nullptr;
}

void MediaTree::Clear() noexcept {
  TreeView_DeleteAllItems(tree_);
  nodes_.Clear();
  file_ = kNoNode;
  knows_nodes_ = true;
}

void MediaTree::SetAllChecks(bool checked) noexcept {
  if (!knows_nodes_) return SetChecksBelow(*this, kNoNode, checked);
  for (const TreeNode node : nodes_) SetChecked(node, checked);
}

void MediaTree::Remove(TreeNode node) noexcept {
  file_ = kNoNode;
  for (size_t i = nodes_.size(); i-- > 0;) {
    if (nodes_[i] == node) nodes_.RemoveAt(i);
  }
  TreeView_DeleteItem(tree_, Item(node));
}

void MediaTree::Toggle(TreeNode node) noexcept {
  TreeView_Expand(tree_, Item(node), TVE_TOGGLE);
}

TreeNode MediaTree::Next(TreeNode node, UINT relation) noexcept {
  return static_cast<TreeNode>(
      SendMessageW(tree_, TVM_GETNEXTITEM, relation, static_cast<LPARAM>(node)));
}

TreeNode MediaTree::Selected() noexcept {
  return Next(kNoNode, TVGN_CARET);
}

void MediaTree::Select(TreeNode node) noexcept {
  TreeView_SelectItem(tree_, Item(node));
}

TreeNode MediaTree::HitTest(POINT at, bool* on_box, bool* on_item) noexcept {
  TVHITTESTINFO hit = {};
  hit.pt = at;
  ScreenToClient(tree_, &hit.pt);
  const TreeNode node =
      static_cast<TreeNode>(SendMessageW(tree_, TVM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit)));
  *on_box = (hit.flags & TVHT_ONITEMSTATEICON) != 0;
  *on_item = (hit.flags & (TVHT_ONITEMICON | TVHT_ONITEMLABEL)) != 0;
  return node;
}

TreeNode MediaTree::Add(TreeNode parent, NodeKind kind, const wchar_t* label) noexcept {
  TVINSERTSTRUCTW insert = {};
  insert.hParent = ParentItem(parent);
  insert.hInsertAfter = TVI_LAST;
  TVITEMW& item = insert.item;
  item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE | TVIF_CHILDREN | TVIF_PARAM;
  item.pszText = const_cast<wchar_t*>(label);  // only read
  item.iImage = item.iSelectedImage = static_cast<int>(kind);
  item.state = INDEXTOSTATEIMAGEMASK(kUncheckedImage);
  item.stateMask = TVIS_STATEIMAGEMASK;
  item.cChildren = kind == NodeKind::kFile ? 0 : 1;
  const TreeNode node = static_cast<TreeNode>(
      SendMessageW(tree_, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
  if (node == kNoNode) return kNoNode;
  knows_nodes_ = nodes_.Append(node) && knows_nodes_;
  if (kind == NodeKind::kFolder) {
    TVITEMW data = {};
    data.mask = TVIF_HANDLE | TVIF_PARAM;
    data.hItem = Item(node);
    data.lParam = static_cast<LPARAM>(node);
    SendMessageW(tree_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&data));
  }
  return node;
}

void MediaTree::SortLabels(TreeNode parent) noexcept {
  const LPARAM item = reinterpret_cast<LPARAM>(ParentItem(parent));
  SendMessageW(tree_, TVM_SORTCHILDREN, 0, item);
}

void MediaTree::SortFolders(TreeNode parent, const FolderOrder& order) noexcept {
  TVSORTCB sort = {};
  sort.hParent = ParentItem(parent);
  sort.lpfnCompare = &CompareFolders;
  sort.lParam = reinterpret_cast<LPARAM>(&order);
  SendMessageW(tree_, TVM_SORTCHILDRENCB, 0, reinterpret_cast<LPARAM>(&sort));
}

TreeNode MediaTree::FirstChild(TreeNode node) noexcept {
  if (node == file_ && node != kNoNode) return kNoNode;
  return node == kNoNode ? Next(kNoNode, TVGN_ROOT) : Next(node, TVGN_CHILD);
}
TreeNode MediaTree::NextSibling(TreeNode node) noexcept {
  return Next(node, TVGN_NEXT);
}
TreeNode MediaTree::Parent(TreeNode node) noexcept {
  return Next(node, TVGN_PARENT);
}

bool MediaTree::IsChecked(TreeNode node) noexcept {
  TVITEMW item = {};
  return GetImageAndState(node, &item) && (item.state >> 12 & 15) == kCheckedImage;
}

void MediaTree::SetChecked(TreeNode node, bool checked) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_STATE;
  item.hItem = Item(node);
  item.state = static_cast<UINT>(INDEXTOSTATEIMAGEMASK(checked ? kCheckedImage : kUncheckedImage));
  item.stateMask = TVIS_STATEIMAGEMASK;
  SendMessageW(tree_, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void MediaTree::CopyLabel(TreeNode node, wchar_t (&label)[kTextCapacity]) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_TEXT;
  item.pszText = label;
  item.cchTextMax = kTextCapacity;
  if (!GetItem(tree_, node, &item)) label[0] = 0;
}

bool MediaTree::IsOpen(TreeNode node) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_STATE;
  item.stateMask = TVIS_EXPANDED;
  return GetItem(tree_, node, &item) && (item.state & TVIS_EXPANDED) != 0;
}

void MediaTree::Open(TreeNode node) noexcept {
  TreeView_Expand(tree_, Item(node), TVE_EXPAND);
}

bool MediaTree::IsFile(TreeNode node) noexcept {
  TVITEMW item = {};
  if (node == kNoNode) return false;
  return node == file_ || (GetImageAndState(node, &item) && node == file_);
}

// Both at once, and what is below a file need not be asked for.
bool MediaTree::GetImageAndState(TreeNode node, TVITEMW* item) noexcept {
  item->mask = TVIF_IMAGE | TVIF_STATE;
  item->stateMask = TVIS_STATEIMAGEMASK;
  if (!GetItem(tree_, node, item)) return false;
  if (item->iImage == static_cast<int>(NodeKind::kFile)) file_ = node;
  return true;
}

}  // namespace kelvo
