#include "entry/language/localized.h"

#include "base/windows/resources.h"
#include "entry/language/modules.h"

namespace kelvo {

HMODULE ModuleWithDialog(HMODULE module, const wchar_t* name) noexcept {
  const HMODULE language = LanguageModule();
  return language && HasWholeDialog(language, module, name) ? language : module;
}

bool FormatLocalized(wchar_t* text, size_t capacity, UINT id,
                     std::initializer_list<FormatArgument> arguments) noexcept {
  constexpr int kFormatCapacity = 256;
  wchar_t format[kFormatCapacity];
  LoadLocalizedString(OwnModule(), id, format, kFormatCapacity);
  if (FormatWide(text, capacity, format, arguments)) return true;
  const wchar_t* built_in = FindStringResource(OwnModule(), id, nullptr);
  return built_in && FormatWide(text, capacity, built_in, arguments);
}

int LoadLocalizedString(HMODULE module, UINT id, wchar_t* buffer, int capacity) noexcept {
  if (capacity <= 0) return 0;
  const size_t room = static_cast<size_t>(capacity);
  size_t copied = 0;
  if (LanguageModule()) copied = CopyStringResource(LanguageModule(), id, buffer, room);
  return static_cast<int>(copied > 0 ? copied : CopyStringResource(module, id, buffer, room));
}

const wchar_t* LoadLocalizedString(HMODULE module, UINT id) noexcept {
  const wchar_t* text = nullptr;
  if (LanguageModule()) text = FindStringResource(LanguageModule(), id, nullptr);
  if (!text) text = FindStringResource(module, id, nullptr);
  return text ? text : L"";
}

INT_PTR LocalizedDialogBox(HMODULE module, UINT id, HWND parent, DLGPROC procedure,
                           LPARAM parameter) noexcept {
  const LanguageHold hold;
  const wchar_t* name = MAKEINTRESOURCEW(id);
  return DialogBoxParamW(ModuleWithDialog(module, name), name, parent, procedure, parameter);
}

INT_PTR LocalizedDialogBox(HMODULE module, const wchar_t* name, HWND parent,
                           DLGPROC procedure) noexcept {
  const LanguageHold hold;
  return DialogBoxParamW(ModuleWithDialog(module, name), name, parent, procedure, 0);
}

INT_PTR RunDialog(ModalDialog& dialog, UINT id, HWND parent) noexcept {
  return LocalizedDialogBox(OwnModule(), id, parent, ModalDialog::Procedure, dialog.parameter());
}

BOOL CreateLocalizedMenuBar(SHMENUBARINFO* info) noexcept {
  const HMODULE language = LanguageModule();
  const HINSTANCE built_in = info->hInstRes;
  if (language && info->nToolBarId != 0 &&
      HasWholeMenuBar(language, info->hInstRes, MAKEINTRESOURCEW(info->nToolBarId)) &&
      (info->nBmpId == 0 || HasResource(language, MAKEINTRESOURCEW(info->nBmpId), RT_BITMAP))) {
    info->hInstRes = language;
  }
  const BOOL made = SHCreateMenuBar(info);
  if (made || info->hInstRes == built_in) return made;
  // The images or the table may be such that the system refuses them.
  info->hInstRes = built_in;
  return SHCreateMenuBar(info);
}

}  // namespace kelvo
