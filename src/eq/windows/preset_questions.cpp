#include "base/windows/pocketpc.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "entry/language/text_entry_dialog.h"
#include "eq/presets_feature.h"
#include "res/resource_ids.h"

namespace kelvo {

bool PresetQuestions::AskName(WindowHandle parent, wchar_t (&name)[kTextCapacity]) noexcept {
  const HWND host = static_cast<HWND>(parent);
  SHFullScreen(host, SHFS_SHOWSIPBUTTON);
  TextEntryDialog entry;
  entry.SetText(LoadLocalizedString(OwnModule(), IDS_NEW_PRESET));
  const bool confirmed = entry.Run(host, TextEntryDialog::Replaced::kAll);
  SHFullScreen(host, SHFS_HIDESIPBUTTON);
  if (confirmed) CopyWide(name, kTextCapacity, entry.GetText());
  return confirmed;
}

bool PresetQuestions::ConfirmOverwrite(WindowHandle parent) noexcept {
  return MessageBoxW(static_cast<HWND>(parent), LoadLocalizedString(OwnModule(), IDS_PRESET_EXISTS),
                     LoadLocalizedString(OwnModule(), IDS_FILE_EXISTS),
                     MB_YESNO | MB_SETFOREGROUND) == IDYES;
}

}  // namespace kelvo
