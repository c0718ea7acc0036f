#include "catalog/windows/catalog_dialogs.h"

#include "base/text/ansi.h"
#include "base/text/wide.h"
#include "base/windows/dialog.h"
#include "base/windows/feature_dialog.h"
#include "catalog/media/id3v1.h"
#include "catalog/tag_editor/tag_edit.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {
namespace {

class TagEditorDialog final : public ModalDialog {
 public:
  TagEditorDialog(FileSystem& files, const MediaEntry& entry) noexcept
      : files_(files), entry_(entry) {
    edit_.Load(files, entry);
  }
  bool updated() const noexcept { return updated_; }

 private:
  bool OnInit() noexcept override {
    MakeFullScreen(window(), SHIDIF_SIPDOWN);
    layout_.Fit(window());
    SetWindowTextW(control(IDC_TAG_FILE), FileNameOf(entry_.path.c_str()));
    FillGenres();
    FillFields();
    SipShowIM(SIPF_ON);
    SetFocus(control(IDC_TAG_ARTIST));
    return false;
  }

  void FillGenres() noexcept {
    const HWND list = control(IDC_TAG_GENRE);
    SendMessageW(list, CB_RESETCONTENT, 0, 0);
    for (unsigned i = 0; i < kGenreCount; ++i) {
      wchar_t name[64];
      AnsiToWide(GenreName(i), 64, name, 64);
      const LRESULT at = SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
      if (at < 0) continue;
      SendMessageW(list, CB_SETITEMDATA, static_cast<WPARAM>(at), static_cast<LPARAM>(i));
      if (edit_.present() && edit_.genre() == i) {
        SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(at), 0);
      }
    }
  }

  void FillFields() noexcept {
    TagTexts shown;
    edit_.Show(&shown);
    Fill(IDC_TAG_TITLE, shown.title);
    Fill(IDC_TAG_ALBUM, shown.album);
    Fill(IDC_TAG_ARTIST, shown.artist);
    Fill(IDC_TAG_COMMENT, shown.comment);
    Fill(IDC_TAG_YEAR, shown.year);
    SetWindowTextW(control(IDC_TAG_TRACK), shown.track);
  }

  // What the tag has no room for cannot be typed.
  template <int kCapacity>
  void Fill(int id, const wchar_t (&text)[kCapacity]) noexcept {
    SendMessageW(control(id), EM_LIMITTEXT, kCapacity - 1, 0);
    SetWindowTextW(control(id), text);
  }

  template <int kCapacity>
  void Read(int id, wchar_t (&text)[kCapacity]) noexcept {
    GetWindowTextW(control(id), text, kCapacity);
  }

  void Update() noexcept {
    const HWND list = control(IDC_TAG_GENRE);
    const LRESULT selected = SendMessageW(list, CB_GETCURSEL, 0, 0);
    const LRESULT genre = SendMessageW(list, CB_GETITEMDATA, static_cast<WPARAM>(selected), 0);
    TagTexts texts;
    Read(IDC_TAG_TITLE, texts.title);
    Read(IDC_TAG_ALBUM, texts.album);
    Read(IDC_TAG_ARTIST, texts.artist);
    Read(IDC_TAG_YEAR, texts.year);
    Read(IDC_TAG_TRACK, texts.track);
    Read(IDC_TAG_COMMENT, texts.comment);
    edit_.Build(texts, static_cast<uint32_t>(genre));
    if (edit_.Write(files_, entry_.path.c_str())) {
      updated_ = true;
      Close(IDOK);
      return;
    }
    MessageBoxW(window(), LoadLocalizedString(OwnModule(), IDS_TAG_NOT_WRITTEN), L"",
                MB_OK | MB_SETFOREGROUND);
  }

  Handled OnCommand(int id, int) noexcept override {
    switch (id) {
      case IDOK:
      case IDC_TAG_UPDATE:
        Update();
        return Handled::kYes;
      case IDCANCEL:
        Close(IDCANCEL);
        return Handled::kYes;
      default:
        return Handled::kNo;
    }
  }

  Handled OnMessage(UINT message, WPARAM, LPARAM, LRESULT*) noexcept override {
    if (message == WM_SIZE) layout_.Fit(window());
    return Handled::kNo;
  }

  void OnDestroy() noexcept override { SipShowIM(SIPF_OFF); }

  FileSystem& files_;
  const MediaEntry& entry_;
  TagEdit edit_;
  WideLayout layout_;
  bool updated_ = false;
};

}  // namespace

bool EditTag(FileSystem& files, HWND parent, const MediaEntry& entry) noexcept {
  TagEditorDialog dialog(files, entry);
  RunDialog(dialog, IDD_TAG_EDITOR, parent);
  return dialog.updated();
}

bool AskDelete(HWND owner, const wchar_t* path) noexcept {
  wchar_t question[2 * kTextCapacity];
  if (!FormatLocalized(question, 2 * kTextCapacity, IDS_ASK_DELETE, {path})) return false;
  return MessageBoxW(owner, question, LoadLocalizedString(OwnModule(), IDS_DELETE_CAPTION),
                     MB_YESNO | MB_SETFOREGROUND) == IDYES;
}

}  // namespace kelvo
