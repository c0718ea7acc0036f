#include "catalog/windows/media_tree.h"

#include "base/windows/enter_key.h"
#include "catalog/tree/hashing.h"
#include "catalog/windows/catalog_page.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

HTREEITEM Next(HWND view, HTREEITEM item, UINT relation) noexcept {
  return reinterpret_cast<HTREEITEM>(
      SendMessageW(view, TVM_GETNEXTITEM, relation, reinterpret_cast<LPARAM>(item)));
}

}  // namespace

void MediaTree::Attach(HWND view) noexcept {
  constexpr int kImages[] = {IDI_GENRE, IDI_ALBUM, IDI_ARTIST, IDI_FILE, IDI_FOLDER};
  constexpr int kStates[] = {IDI_NO_STATE, IDI_UNCHECKED, IDI_CHECKED};
  view_ = view;
  SetWindowLongPtrW(view, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  procedure_ = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrW(view, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Procedure)));
  images_ = LoadIconList(OwnModule(), kImages, 5);
  TreeView_SetImageList(view_, images_.get(), TVSIL_NORMAL);
  // The control has made a list of its own for its check boxes, and keeps it when memory is out.
  if (UniqueIconList states = LoadIconList(OwnModule(), kStates, 3)) {
    UniqueIconList(TreeView_SetImageList(view_, states.Release(), TVSIL_STATE));
  }
}

void MediaTree::Detach() noexcept {
  Clear();
  TreeView_SetImageList(view_, nullptr, TVSIL_NORMAL);
  UniqueIconList(TreeView_SetImageList(view_, nullptr, TVSIL_STATE));
  images_.Reset();
  SetWindowLongPtrW(view_, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(procedure_));
  view_ = nullptr;
}

LRESULT CALLBACK MediaTree::Procedure(HWND view, UINT message, WPARAM wparam,
                                      LPARAM lparam) noexcept {
  MediaTree& self = *reinterpret_cast<MediaTree*>(GetWindowLongPtrW(view, GWLP_USERDATA));
  const auto node = [&] { return self.NodeOf(reinterpret_cast<TVITEMW*>(lparam)->hItem); };
  switch (message) {
    case WM_GETDLGCODE:
      return self.Send(message, wparam, lparam) | EnterCode(wparam, lparam);
    case WM_PAINT:
      self.ShowChecks();
      break;
    case TVM_GETITEMW:
    case TVM_GETITEMA:
      self.ShowCheck(node());
      break;
    case TVM_GETITEMSTATE:
      self.ShowCheck(self.NodeOf(reinterpret_cast<HTREEITEM>(wparam)));
      break;
    case TVM_SETITEMW:
    case TVM_SETITEMA: {
      self.ShowCheck(node());
      const LRESULT result = self.Send(message, wparam, lparam);
      self.TakeCheck(node());
      return result;
    }
    default:
      break;
  }
  return self.Send(message, wparam, lparam);
}

CatalogTree& MediaTree::nodes() noexcept {
  // A check that is still to be shown was changed after the control had toggled the box.
  if (tapped_ != kNoNode && !nodes_.IsToShow(tapped_)) TakeCheck(tapped_);
  return nodes_;
}

void MediaTree::Clear() noexcept {
  TreeView_DeleteAllItems(view_);
  nodes_.Clear();
  items_.Clear();
  slots_.Clear();
  tapped_ = kNoNode;
}

void MediaTree::Show(EntryList& entries) noexcept {
  if (!items_.Resize(nodes_.last()) || !slots_.Resize(SlotsFor(2 * nodes_.last() + 1))) {
    nodes_.Clear();
  }
  // Groups first: they are asked for most, and found the sooner.
  WalkBelow groups(nodes_, kNoNode);
  while (const TreeNode node = groups.Next()) {
    if (!nodes_.IsFile(node)) Insert(node, TVI_LAST);
  }
  InsertFiles(kNoNode);
  for (TreeNode node = 1; node <= nodes_.last(); ++node) {
    if (!nodes_.IsFile(node)) InsertFiles(node);
  }
  nodes_.ReleaseLabels();
  for (TreeNode node = 1; node <= nodes_.last(); ++node) {
    if (nodes_.Has(node) && !items_[node - 1]) nodes_.Remove(node);
  }
  for (MediaEntry& entry : entries) {
    if (!nodes_.Has(entry.item)) entry.item = kNoNode;
  }
}

// The files among the children, each where it belongs between the groups.
void MediaTree::InsertFiles(TreeNode parent) noexcept {
  TreeNode last_group = kNoNode;
  for (TreeNode child = nodes_.FirstChild(parent); child; child = nodes_.NextSibling(child)) {
    if (!nodes_.IsFile(child)) last_group = child;
  }
  HTREEITEM before = TVI_FIRST;
  for (TreeNode child = nodes_.FirstChild(parent); child; child = nodes_.NextSibling(child)) {
    if (nodes_.IsFile(child)) Insert(child, last_group == kNoNode ? TVI_LAST : before);
    if (child == last_group) last_group = kNoNode;
    if (Item(child)) before = Item(child);
  }
}

void MediaTree::Insert(TreeNode node, HTREEITEM before) noexcept {
  TVINSERTSTRUCTW insert = {};
  insert.hParent = Item(nodes_.Parent(node));
  if (!insert.hParent) return;  // could not be inserted
  insert.hInsertAfter = before;
  TVITEMW& item = insert.item;
  item.mask = TVIF_TEXT | TVIF_IMAGE | TVIF_SELECTEDIMAGE | TVIF_STATE | TVIF_CHILDREN | TVIF_PARAM;
  item.pszText = const_cast<wchar_t*>(nodes_.Label(node));  // only read
  item.iImage = item.iSelectedImage = static_cast<int>(nodes_.Kind(node));
  item.state = INDEXTOSTATEIMAGEMASK(kUncheckedImage);
  item.stateMask = TVIS_STATEIMAGEMASK;
  item.cChildren = nodes_.IsFile(node) ? 0 : 1;
  const HTREEITEM inserted =
      reinterpret_cast<HTREEITEM>(Send(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
  if (!inserted) return;
  items_[node - 1] = inserted;
  size_t slot = HashOfHandle(reinterpret_cast<uintptr_t>(inserted)) & (slots_.size() - 1);
  while (slots_[slot] != 0) slot = (slot + 1) & (slots_.size() - 1);
  slots_[slot] = static_cast<uint32_t>(node);
  if (nodes_.Kind(node) == NodeKind::kFolder) {
    TVITEMW data = {};
    data.mask = TVIF_HANDLE | TVIF_PARAM;
    data.hItem = inserted;
    data.lParam = reinterpret_cast<LPARAM>(inserted);
    Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&data));
  }
}

TreeNode MediaTree::NodeOf(HTREEITEM item) const noexcept {
  if (!item || slots_.empty()) return kNoNode;
  const size_t mask = slots_.size() - 1;
  size_t slot = HashOfHandle(reinterpret_cast<uintptr_t>(item)) & mask;
  while (slots_[slot] != 0 && items_[slots_[slot] - 1] != item) slot = (slot + 1) & mask;
  return nodes_.Has(slots_[slot]) ? slots_[slot] : kNoNode;
}

void MediaTree::ShowChecks() noexcept {
  HTREEITEM item = Next(view_, nullptr, TVGN_FIRSTVISIBLE);
  for (UINT rows = TreeView_GetVisibleCount(view_) + 1; item && rows > 0; --rows) {
    ShowCheck(NodeOf(item));
    item = Next(view_, item, TVGN_NEXTVISIBLE);
  }
}

void MediaTree::ShowCheck(TreeNode node) noexcept {
  if (node == kNoNode || !nodes_.IsToShow(node)) return;
  const bool checked = nodes_.IsChecked(node);
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_STATE;
  item.hItem = Item(node);
  item.state = static_cast<UINT>(INDEXTOSTATEIMAGEMASK(checked ? kCheckedImage : kUncheckedImage));
  item.stateMask = TVIS_STATEIMAGEMASK;
  Send(TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  nodes_.SetShown(node, checked);
}

void MediaTree::TakeCheck(TreeNode node) noexcept {
  if (node == kNoNode) return;
  const bool checked =
      State(node, TVIS_STATEIMAGEMASK) == static_cast<UINT>(INDEXTOSTATEIMAGEMASK(kCheckedImage));
  nodes_.SetChecked(node, checked);
  nodes_.SetShown(node, checked);
}

UINT MediaTree::State(TreeNode node, UINT mask) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_STATE;
  item.hItem = Item(node);
  item.stateMask = mask;
  return Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item)) ? item.state & mask : 0;
}

void MediaTree::BoxTapped(TreeNode node) noexcept {
  ShowCheck(node);
  tapped_ = node;
}

void MediaTree::Remove(TreeNode node) noexcept {
  if (tapped_ == node) tapped_ = kNoNode;
  nodes_.Remove(node);
  TreeView_DeleteItem(view_, Item(node));
}

void MediaTree::Toggle(TreeNode node) noexcept {
  TreeView_Expand(view_, Item(node), TVE_TOGGLE);
}

TreeNode MediaTree::Selected() noexcept {
  return NodeOf(Next(view_, nullptr, TVGN_CARET));
}

void MediaTree::Select(TreeNode node) noexcept {
  TreeView_SelectItem(view_, node == kNoNode ? nullptr : Item(node));
}

TreeNode MediaTree::HitTest(POINT at, bool* on_box, bool* on_item) noexcept {
  TVHITTESTINFO hit = {};
  hit.pt = at;
  ScreenToClient(view_, &hit.pt);
  const HTREEITEM item = TreeView_HitTest(view_, &hit);
  *on_box = (hit.flags & TVHT_ONITEMSTATEICON) != 0;
  *on_item = (hit.flags & (TVHT_ONITEMICON | TVHT_ONITEMLABEL)) != 0;
  return NodeOf(item);
}

void MediaTree::CopyLabel(TreeNode node, wchar_t (&label)[kTextCapacity]) noexcept {
  TVITEMW item = {};
  item.mask = TVIF_HANDLE | TVIF_TEXT;
  item.hItem = Item(node);
  item.pszText = label;
  item.cchTextMax = kTextCapacity;
  if (!Send(TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item))) label[0] = 0;
}

bool MediaTree::IsOpen(TreeNode node) noexcept {
  return State(node, TVIS_EXPANDED) != 0;
}

void MediaTree::Open(TreeNode node) noexcept {
  TreeView_Expand(view_, Item(node), TVE_EXPAND);
}

}  // namespace kelvo
