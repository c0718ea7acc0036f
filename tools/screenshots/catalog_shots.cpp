#include "res/resource_ids.h"
#include "tools/screenshots/shot.h"
#include "tools/screenshots/studio.h"
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

void CloseMenu(User& user) {
  user.LeaveMenu();
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
  user.Check(List(user), 0);
  user.Check(List(user), 1);
  user.TapItem(List(user), 2);
}

void OpenChecks(User& user) {
  user.OpenMenu(ID_CHECKS);
}

void HoldPlaylist(User& user) {
  user.OpenContextMenu(List(user), user.PartOf(List(user), 2, LVHT_ONITEMLABEL));
}

void RenamePlaylist(User& user) {
  user.OpenByCommand(ID_RENAME);
}

void DeletePlaylist(User& user) {
  user.OpenBox(ID_DELETE_FILE);
}

// The media.

void ShowMedia(User& user) {
  user.ShowPage(kMedia);
}

void OpenGrouping(User& user) {
  user.OpenMenu(ID_GROUPING);
}

void GroupBy(User& user, int order) {
  user.Do(ID_FIRST_ORDER + order - 1);
  user.ExpandAll(Tree(user));
  SendMessageW(Tree(user), WM_VSCROLL, SB_TOP, 0);
}

void GroupByGenre(User& user) {
  GroupBy(user, 1);
}

// Everything checked, then a tap on one file's box: its groups lose their checks.
void GroupByArtist(User& user) {
  GroupBy(user, 3);
  user.Do(ID_CHECK_ALL);
  const HWND tree = Tree(user);
  HTREEITEM file = TreeView_GetNextSibling(tree, TreeView_GetRoot(tree));
  while (const HTREEITEM child = TreeView_GetChild(tree, file)) file = child;
  user.Tap(tree, user.PartOf(tree, file, TVHT_ONITEMSTATEICON));
  TreeView_SelectItem(tree, file);
}

void GroupByFolder(User& user) {
  GroupBy(user, 7);
}

void EditTag(User& user) {
  user.SelectNode(Tree(user), "Music\\The Square Roots\\Half Time.mp3");
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
  user.ShowPage(kCurrent);
}

void ShowCurrent(User& user) {
  user.ShowPage(kMedia);
  user.Do(ID_CHECK_ALL);
  user.Do(ID_ADD_CHECKED);
  user.ShowPage(kCurrent);
  user.Check(List(user), 1, false);
  user.TapItem(List(user), 3);
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

void Open(Studio& session) {
  session.ShowCatalog();
}

void Close(User& user) {
  user.Done();
}

}  // namespace

const Group kCatalogGroup = MakeGroup(Open, kShots, Close);

}  // namespace screenshots
