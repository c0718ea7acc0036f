// The dialog for saving a playlist, whose resources are the host's.
#include "res/resource_ids.h"
#include "tools/screenshots/shot.h"
#include "tools/screenshots/studio.h"
#include "tools/screenshots/user.h"

namespace screenshots {
namespace {

// Controls of the host's dialog.
constexpr int kTree = 1000;
constexpr int kName = 1001;
constexpr int kSave = 1002;

void OpenSave(User& user) {
  user.ShowPage(2);
  user.OpenByCommand(ID_SAVE_PLAYLIST);
  user.Wait("the folders", [&] { return TreeView_GetCount(user.Control(kTree)) > 1; });
}

void SaveWithoutName(User& user) {
  user.OpenBox(kSave);
}

void Confirm(User& user) {
  user.CloseBy(IDOK);
}

// A tap on a playlist that exists.
void ChoosePlaylist(User& user) {
  const HWND tree = user.Control(kTree);
  user.ExpandAll(tree);
  HTREEITEM last = TreeView_GetRoot(tree);
  for (HTREEITEM next = last; next; next = TreeView_GetNextVisible(tree, next)) last = next;
  user.Tap(tree, user.PartOf(tree, last, TVHT_ONITEMLABEL));
}

void SaveOverIt(User& user) {
  user.OpenBox(kSave);
}

void AnswerNo(User& user) {
  user.CloseBy(IDNO);
}

void SaveUnderBadName(User& user) {
  SetWindowTextW(user.Control(kName), L"a?b");
  user.OpenBox(kSave);
}

void ConfirmAndClose(User& user) {
  user.CloseBy(IDOK);
  user.CloseBy(IDCANCEL);
}

constexpr Shot kShots[] = {
    {L"save", OpenSave, nullptr},
    {L"save-nothing-chosen", SaveWithoutName, Confirm},
    {L"save-chosen", ChoosePlaylist, nullptr},
    {L"save-overwrite", SaveOverIt, AnswerNo},
    {L"save-not-created", SaveUnderBadName, ConfirmAndClose},
};

void Open(Studio& session) {
  session.ShowCatalog();
}

void Close(User& user) {
  user.Done();
}

}  // namespace

const Group kSaveGroup = MakeGroup(Open, kShots, Close);

}  // namespace screenshots
