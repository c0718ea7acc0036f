#include "res/resource_ids.h"
#include "tools/screenshots/session.h"
#include "tools/screenshots/shot.h"
#include "tools/screenshots/user.h"

namespace screenshots {
namespace {

enum Pages { kPlaylists, kMedia, kCurrent };

HWND List(const User& user) {
  return user.Control(IDC_LIST);
}

HWND Tree(const User& user) {
  return user.Control(IDC_TREE);
}

HTREEITEM Root(HWND tree) {
  return NextItem(tree, TVGN_ROOT, nullptr);
}

void CloseMenu(User& user) {
  user.CloseMenu();
}

void Cancel(User& user) {
  user.CloseBy(IDCANCEL);
}

void AnswerNo(User& user) {
  user.CloseBy(IDNO);
}

// The playlists.

void FindPlaylists(User& user) {
  user.Wait("the first scan", [&] { return ListView_GetItemCount(List(user)) > 0; });
  CheckListItem(List(user), 0);
  CheckListItem(List(user), 1);
  user.Tap(List(user), ListItemText(List(user), 2));
}

void OpenChecks(User& user) {
  user.OpenMenu(ID_CHECKS);
}

void HoldPlaylist(User& user) {
  user.OpenContextMenu(List(user), ListItemText(List(user), 2));
}

void RenamePlaylist(User& user) {
  user.OpenByCommand(ID_RENAME);
}

void DeletePlaylist(User& user) {
  user.OpenBox(ID_DELETE_FILE);
}

// The media.

void ShowMedia(User& user) {
  user.GoTo(kMedia);
}

void OpenGrouping(User& user) {
  user.OpenMenu(ID_GROUPING);
}

void GroupBy(User& user, int order) {
  user.Command(ID_FIRST_ORDER + order - 1);
  ExpandAll(Tree(user), Root(Tree(user)));
  SendMessageW(Tree(user), WM_VSCROLL, SB_TOP, 0);
}

void GroupByGenre(User& user) {
  GroupBy(user, 1);
}

// Everything checked, then a tap on one file's box: its groups lose their checks.
void GroupByArtist(User& user) {
  GroupBy(user, 3);
  user.Command(ID_CHECK_ALL);
  const HWND tree = Tree(user);
  const HTREEITEM group = NextItem(tree, TVGN_NEXT, Root(tree));
  const HTREEITEM file = FirstLeaf(tree, group ? group : Root(tree));
  const RECT label = TreeItemLabel(tree, file);
  user.Tap(tree, {label.left - 28, (label.top + label.bottom) / 2});
  SelectTreeItem(tree, file);
}

void GroupByFolder(User& user) {
  GroupBy(user, 7);
}

HTREEITEM FindLabel(HWND tree, HTREEITEM from, const wchar_t* label) {
  for (HTREEITEM item = from; item; item = NextItem(tree, TVGN_NEXT, item)) {
    wchar_t text[300] = L"";
    TVITEMW node = {};
    node.mask = TVIF_HANDLE | TVIF_TEXT;
    node.hItem = item;
    node.pszText = text;
    node.cchTextMax = 300;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&node));
    if (lstrcmpW(text, label) == 0) return item;
    const HTREEITEM below = FindLabel(tree, NextItem(tree, TVGN_CHILD, item), label);
    if (below) return below;
  }
  return nullptr;
}

void EditTag(User& user) {
  SelectTreeItem(Tree(user), FindLabel(Tree(user), Root(Tree(user)), L"Half Time.mp3"));
  user.OpenByCommand(ID_EDIT_TAG);
}

void OpenGenres(User& user) {
  SendMessageW(user.Control(IDC_TAG_GENRE), CB_SHOWDROPDOWN, TRUE, 0);
}

void CloseTagEditor(User& user) {
  SendMessageW(user.Control(IDC_TAG_GENRE), CB_SHOWDROPDOWN, FALSE, 0);
  user.CloseBy(IDCANCEL);
}

void DeleteMedia(User& user) {
  user.OpenBox(ID_DELETE_FILE);
}

// The current playlist.

void ShowEmptyCurrent(User& user) {
  user.GoTo(kCurrent);
}

void ShowCurrent(User& user) {
  user.GoTo(kMedia);
  user.Command(ID_CHECK_ALL);
  user.Command(ID_ADD_CHECKED);
  user.GoTo(kCurrent);
  ListView_SetItemState(List(user), 1, INDEXTOSTATEIMAGEMASK(1), LVIS_STATEIMAGEMASK);
  user.Tap(List(user), ListItemText(List(user), 3));
}

void ScrollCurrent(User& user) {
  SendMessageW(List(user), LVM_SCROLL, 1000, 0);
}

void OpenSelection(User& user) {
  SendMessageW(List(user), LVM_SCROLL, static_cast<WPARAM>(-1000), 0);
  user.OpenMenu(ID_SELECTION);
}

constexpr Shot kShots[] = {
    {L"catalog-playlists", FindPlaylists, nullptr},
    {L"catalog-playlists-checks", OpenChecks, CloseMenu},
    {L"catalog-playlists-held", HoldPlaylist, CloseMenu},
    {L"file-name", RenamePlaylist, Cancel},
    {L"delete-playlist", DeletePlaylist, AnswerNo},
    {L"catalog-current-empty", ShowEmptyCurrent, nullptr},
    {L"catalog-media", ShowMedia, nullptr},
    {L"catalog-media-grouping", OpenGrouping, CloseMenu},
    {L"catalog-media-genres", GroupByGenre, nullptr},
    {L"catalog-media-artists", GroupByArtist, nullptr},
    {L"catalog-media-checks", OpenChecks, CloseMenu},
    {L"catalog-media-folders", GroupByFolder, nullptr},
    {L"tag-editor", EditTag, nullptr},
    {L"tag-editor-genres", OpenGenres, CloseTagEditor},
    {L"delete-media", DeleteMedia, AnswerNo},
    {L"catalog-current", ShowCurrent, nullptr},
    {L"catalog-current-scrolled", ScrollCurrent, nullptr},
    {L"catalog-current-selection", OpenSelection, CloseMenu},
};

void Open(Session& session) {
  session.ShowCatalog();
}

void Close(User& user) {
  user.Done();
}

}  // namespace

const Group kCatalogGroup = MakeGroup(Open, kShots, Close);

}  // namespace screenshots
