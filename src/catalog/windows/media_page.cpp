#include "catalog/windows/catalog_sheet.h"

#include "base/windows/pocketpc.h"
#include "catalog/lists/device_lists.h"
#include "catalog/media/entry_list.h"
#include "catalog/media/id3v1.h"
#include "catalog/tree/build_tree.h"
#include "catalog/tree/checks.h"
#include "catalog/windows/catalog_dialogs.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

// Posted by a tap to the page itself: by then the tapped node is the selected one.
constexpr UINT kRefreshMessage = WM_USER + 257;

}  // namespace

MediaPage::MediaPage(CatalogState& state, CatalogSheetEvents& events) noexcept
    : CatalogPage(state, events, IDC_TREE, IDR_MEDIA_BAR) {}

void MediaPage::OnPageInit() noexcept {
  tree_.Attach(view());
  MarkOrder();
  RebuildTree();
  UpdateFileCommands();
}

void MediaPage::OnPageDestroy() noexcept {
  tree_.Detach();
  for (MediaEntry& entry : state().media) entry.item = kNoNode;
}

void MediaPage::RebuildTree() noexcept {
  if (!is_open() || state().scanning) return;
  const WaitCursor wait;
  const RedrawPause pause(view());
  tree_.Clear();
  BuildTree(state().media, state().order, tree_.nodes());
  tree_.Show(state().media);
  UpdateFileCommands();
}

ModalDialog::Handled MediaPage::OnCommand(int id, int) noexcept {
  if (id >= ID_FIRST_ORDER && id <= ID_LAST_ORDER) {
    SetOrder(ToGroupingOrder(static_cast<uint32_t>(id - ID_FIRST_ORDER + 1)));
    return Handled::kYes;
  }
  switch (id) {
    case IDOK:
      CloseSheet();
      break;
    case ID_RESCAN:
      events().Rescan(window());
      break;
    case ID_CHECK_ALL:
    case ID_CHECK_NONE:
    case ID_INVERT_CHECKS:
      ChangeChecks(id);
      break;
    case ID_ADD_CHECKED:
      AddCheckedFilesToPlaylist();
      break;
    case ID_EDIT_TAG:
      EditSelectedTag();
      break;
    case ID_DELETE_FILE:
      DeleteSelectedFile();
      break;
    default:
      return Handled::kNo;
  }
  return Handled::kYes;
}

LRESULT MediaPage::OnNotify(const NMHDR& header, LPARAM lparam) noexcept {
  if (header.hwndFrom != view()) return 0;
  if (header.code == static_cast<UINT>(TVN_SELCHANGEDW)) {
    PostMessageW(window(), kRefreshMessage, 0, 0);
    return 0;
  }
  if (header.code == static_cast<UINT>(TVN_KEYDOWN)) {
    const TreeNode selected = tree_.Selected();
    const WORD key = reinterpret_cast<const NMTVKEYDOWN*>(lparam)->wVKey;
    // The box that the space bar is about to toggle is tapped as well.
    if (selected != kNoNode && key == VK_SPACE) TapBox(selected);
    if (selected != kNoNode && key == VK_RETURN) Choose(selected);
    return 0;
  }
  const bool is_double = header.code == static_cast<UINT>(NM_DBLCLK);
  if (!is_double && header.code != static_cast<UINT>(NM_CLICK)) return 0;
  bool on_box = false;
  bool on_item = false;
  const TreeNode node = tree_.HitTest(LastMessagePoint(), &on_box, &on_item);
  if (node == kNoNode) return 0;
  if (is_double) {
    if (on_item && tree_.nodes().IsFile(node)) Choose(node);  // a group opens by itself
    return 0;
  }
  if (on_item) PostMessageW(window(), kRefreshMessage, 0, 0);
  if (on_box) TapBox(node);
  return 0;
}

void MediaPage::TapBox(TreeNode node) noexcept {
  CheckBoxTapped(tree_.nodes(), node);
  tree_.ShowChecks();
  tree_.BoxTapped(node);
}

// Enter opens and closes a group, and is a tap on the box of a file.
void MediaPage::Choose(TreeNode node) noexcept {
  CatalogTree& nodes = tree_.nodes();
  if (!nodes.IsFile(node)) {
    tree_.Toggle(node);
    return;
  }
  const bool checked = nodes.IsChecked(node);
  CheckBoxTapped(nodes, node);
  nodes.SetChecked(node, !checked);
  tree_.ShowChecks();
}

bool MediaPage::OnPageMessage(UINT message, WPARAM) noexcept {
  if (message != kRefreshMessage) return false;
  UpdateFileCommands();
  return true;
}

void MediaPage::ChangeChecks(int id) noexcept {
  const WaitCursor wait;
  if (id == ID_INVERT_CHECKS) {
    InvertChecksBelow(tree_.nodes(), kNoNode);
  } else {
    SetChecksBelow(tree_.nodes(), kNoNode, id == ID_CHECK_ALL);
  }
  tree_.ShowChecks();
}

void MediaPage::SetOrder(GroupingOrder order) noexcept {
  state().order = order;
  MarkOrder();
  RebuildTree();
}

void MediaPage::MarkOrder() noexcept {
  if (!menu_bar()) return;
  const HMENU menu =
      reinterpret_cast<HMENU>(SendMessageW(menu_bar(), SHCMBM_GETSUBMENU, 0, ID_GROUPING));
  if (!menu) return;
  const UINT current = ID_FIRST_ORDER + static_cast<UINT>(state().order) - 1;
  for (UINT id = ID_FIRST_ORDER; id <= ID_LAST_ORDER; ++id) {
    CheckMenuItem(menu, id, MF_BYCOMMAND | (id == current ? MF_CHECKED : MF_UNCHECKED));
  }
}

void MediaPage::UpdateFileCommands() noexcept {
  const bool is_file = tree_.nodes().IsFile(tree_.Selected());
  EnableButton(ID_EDIT_TAG, is_file);
  EnableButton(ID_DELETE_FILE, is_file);
}

void MediaPage::AddCheckedFilesToPlaylist() noexcept {
  const WaitCursor wait;
  AddCheckedFiles(tree_.nodes(), state().media, &state().current);
  events().CurrentPlaylistChanged();
}

void MediaPage::DeleteSelectedFile() noexcept {
  TreeNode node = tree_.Selected();
  const size_t index = IndexOfNode(state().media, node);
  if (index == state().media.size()) return;
  const wchar_t* path = state().media[index].path.c_str();
  if (!AskDelete(window(), path) || !state().files.Delete(path)) return;
  DeleteEntry(state().media, index);
  do {
    const TreeNode parent = tree_.nodes().Parent(node);
    tree_.Remove(node);
    node = parent;
  } while (node != kNoNode && tree_.nodes().FirstChild(node) == kNoNode);
  UpdateFileCommands();
}

void MediaPage::EditSelectedTag() noexcept {
  MediaEntry* entry = EntryOfNode(state().media, tree_.Selected());
  if (!entry || MediaKindOf(entry->path.c_str()) != MediaKind::kMpeg) return;
  if (!EditTag(state().files, window(), *entry)) return;
  const WaitCursor wait;
  TreePlace place;
  place.Remember(tree_.nodes(), tree_, state().media);
  entry->tag.Reset();
  ReadId3v1(state().files, entry);
  RebuildTree();
  CopyTagToPlaylist(*entry, state().current);
  const RedrawPause pause(view());
  place.Restore(tree_.nodes(), tree_, state().media, *entry);
  tree_.Select(entry->item);  // the user goes on where it was
}

}  // namespace kelvo
