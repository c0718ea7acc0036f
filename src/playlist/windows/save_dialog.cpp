#include "playlist/save_dialog.h"

#include "base/windows/dialog.h"
#include "base/windows/enter_key.h"
#include "base/windows/feature_dialog.h"
#include "base/windows/pocketpc.h"
#include "base/windows/resources.h"
#include "kelvo/host_resources.h"
#include "playlist/windows/folder_tree.h"

namespace kelvo {
namespace {

// Posted to itself: the tree is filled when the dialog is to be seen already.
constexpr UINT kFillMessage = 2049;

constexpr UINT kNoText = 0;  // among the string ids

class SaveDialog final : public ModalDialog {
 public:
  SaveDialog(FileSystem& files, SaveDialogState* state) noexcept
      : files_(files), state_(*state), tree_(files) {}

 private:
  bool OnInit() noexcept override {
    state_.tree = control(KELVO_HOST_SAVE_TREE);
    state_.dialog = window();
    MakeFullScreen(window(), SHIDIF_SIPDOWN);
    LeaveEnterTo(control(KELVO_HOST_SAVE_TREE));
    SHMENUBARINFO bar = {};
    bar.cbSize = sizeof(bar);
    bar.hwndParent = window();
    bar.nToolBarId = KELVO_HOST_SAVE_MENU_BAR;
    bar.hInstRes = host_module();
    SHCreateMenuBar(&bar);
    state_.menu_bar = bar.hwndMB;
    font_ = MakeListFont();
    for (const int id : {KELVO_HOST_SAVE_TREE, KELVO_HOST_SAVE_PATH}) {
      SendMessageW(control(id), WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
    }
    LayOut();
    PostMessageW(window(), kFillMessage, 0, 0);
    return true;
  }

  Handled OnCommand(int id, int notification) noexcept override {
    switch (id) {
      case IDOK:
      case IDCANCEL:
        state_.path[0] = 0;
        state_.succeeded = 0;
        Close(IDCANCEL);
        return Handled::kYes;
      case KELVO_HOST_SAVE_BUTTON:
        Save();
        return Handled::kYes;
      case KELVO_HOST_SAVE_NAME:
        if (notification != EN_CHANGE) return Handled::kNo;
        ReadName();
        return Handled::kYes;
      default:
        return Handled::kNo;
    }
  }

  Handled OnMessage(UINT message, WPARAM wparam, LPARAM lparam, LRESULT*) noexcept override {
    switch (message) {
      case kFillMessage:
        tree_.Attach(static_cast<HWND>(state_.tree), host_module());
        tree_.FillRoot();
        return Handled::kYes;
      case WM_SIZE:
      case WM_MOVE:
        LayOut();
        return Handled::kNo;
      case WM_SETTINGCHANGE:
        SHHandleWMSettingChange(window(), wparam, lparam, &activation_);
        return Handled::kNo;
      case WM_NOTIFY:
        OnNotify(*reinterpret_cast<const NMHDR*>(lparam));
        return Handled::kNo;
      default:
        return Handled::kNo;
    }
  }

  void OnNotify(const NMHDR& header) noexcept {
    if (header.idFrom != static_cast<UINT_PTR>(KELVO_HOST_SAVE_TREE)) return;
    if (header.code == static_cast<UINT>(TVN_ITEMEXPANDINGW)) {
      const NMTREEVIEWW& change = reinterpret_cast<const NMTREEVIEWW&>(header);
      tree_.Expanding(change.itemNew.hItem, (change.action & TVE_EXPAND) != 0);
    } else if (header.code == static_cast<UINT>(NM_CLICK)) {
      const DWORD at = GetMessagePos();
      const POINT point = {static_cast<short>(LOWORD(at)), static_cast<short>(HIWORD(at))};
      if (const HTREEITEM item = tree_.HitTest(point)) Tapped(item);
    }
  }

  void Tapped(HTREEITEM tapped) noexcept {
    const uintptr_t item = reinterpret_cast<uintptr_t>(tapped);
    const bool is_folder = tree_.IsFolder(tapped);
    wchar_t text[kTextCapacity];
    if (!FolderPathOf(tree_, is_folder ? item : tree_.Parent(item), text)) return;
    CopyWide(state_.folder, kTextCapacity, text);
    if (!is_folder) {
      tree_.Text(item, text);
      SetWindowTextW(control(KELVO_HOST_SAVE_NAME), text);
      CopyWide(state_.name, kTextCapacity, text);
    }
    ShowPath();
  }

  void ReadName() noexcept {
    GetWindowTextW(control(KELVO_HOST_SAVE_NAME), state_.name, kTextCapacity);
    ShowPath();
  }

  void ShowPath() noexcept {
    state_.UpdatePath();
    SetWindowTextW(control(KELVO_HOST_SAVE_PATH), state_.path);
  }

  void Save() noexcept {
    GetWindowTextW(control(KELVO_HOST_SAVE_PATH), state_.path, kTextCapacity);
    switch (state_.CheckPath(files_)) {
      case SaveDialogState::Check::kEmpty:
        ShowMessage(KELVO_HOST_TEXT_EMPTY_PATH, KELVO_HOST_CAPTION_EMPTY_PATH, MB_OK);
        return;
      case SaveDialogState::Check::kExists:
        if (ShowMessage(KELVO_HOST_TEXT_OVERWRITE, KELVO_HOST_CAPTION_OVERWRITE, MB_YESNO) != IDYES)
          return;
        break;
      case SaveDialogState::Check::kFree:
        break;
    }
    if (!state_.ProveWritable(files_)) {
      ShowMessage(KELVO_HOST_TEXT_NOT_CREATED, kNoText, MB_OK);
      return;
    }
    state_.succeeded = 1;
    Close(KELVO_HOST_SAVE_BUTTON);
  }

  // Copied: a host need not end its strings with a NUL, as the library does with its own.
  void LoadText(UINT id, wchar_t (&text)[kTextCapacity]) const noexcept {
    if (id == kNoText || LoadStringW(host_module(), id, text, kTextCapacity) <= 0) text[0] = 0;
  }
  int ShowMessage(UINT text_id, UINT caption_id, UINT buttons) noexcept {
    wchar_t text[kTextCapacity];
    wchar_t caption[kTextCapacity];
    LoadText(text_id, text);
    LoadText(caption_id, caption);
    return MessageBoxW(window(), text, caption, buttons | MB_SETFOREGROUND);
  }

  SIZE SizeOf(int id) const noexcept {
    RECT rect = {};
    GetWindowRect(control(id), &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
  }

  // To the bottom row; position and width across stay.
  void PlaceInRow(int id, int bottom, int height) noexcept {
    RECT rect = {};
    GetWindowRect(control(id), &rect);
    POINT corner = {rect.left, rect.top};
    ScreenToClient(window(), &corner);
    MoveWindow(control(id), corner.x, bottom - height, rect.right - rect.left, height, TRUE);
  }

  void LayOut() noexcept {
    RECT client;
    GetClientRect(window(), &client);
    const int row = SizeOf(KELVO_HOST_SAVE_NAME).cy;
    const int line = SizeOf(KELVO_HOST_SAVE_PATH).cy;
    const int tree = client.bottom - line - row - 4;
    MoveWindow(control(KELVO_HOST_SAVE_TREE), 0, 0, client.right + 1, tree > 0 ? tree : 0, TRUE);
    MoveWindow(control(KELVO_HOST_SAVE_PATH), 2, tree > 0 ? tree : 0, client.right - 2, line, TRUE);
    PlaceInRow(KELVO_HOST_SAVE_NAME, client.bottom - 2, row);
    PlaceInRow(KELVO_HOST_SAVE_BUTTON, client.bottom - 2, row);
  }

  void OnDestroy() noexcept override {
    tree_.Detach();
    state_.tree = state_.dialog = state_.menu_bar = nullptr;
  }

  HMODULE host_module() const noexcept { return static_cast<HMODULE>(state_.host_module); }

  FileSystem& files_;
  SaveDialogState& state_;
  FolderTree tree_;
  UniqueFont font_;
  SHACTIVATEINFO activation_ = {sizeof(SHACTIVATEINFO), nullptr, 0, 0, 0, 0};
};

}  // namespace

bool AskWhereToSave(FileSystem& files, ModuleHandle host_module, WindowHandle parent,
                    SaveDialogState* state) noexcept {
  const DialogGuard guard;
  if (!guard.taken()) return false;
  state->host_module = host_module;
  SaveDialog dialog(files, state);
  DialogBoxParamW(static_cast<HMODULE>(host_module), MAKEINTRESOURCEW(KELVO_HOST_SAVE_DIALOG),
                  static_cast<HWND>(parent), ModalDialog::Procedure, dialog.parameter());
  return state->succeeded != 0;
}

}  // namespace kelvo
