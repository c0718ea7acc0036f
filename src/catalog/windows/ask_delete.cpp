#include "catalog/windows/ask_delete.h"

#include "base/text/wide.h"
#include "entry/language/localized.h"
#include "entry/language/modules.h"
#include "res/resource_ids.h"

namespace kelvo {

bool AskDelete(HWND owner, const wchar_t* path) noexcept {
  wchar_t question[2 * kTextCapacity];
  if (!FormatLocalized(question, 2 * kTextCapacity, IDS_ASK_DELETE, {path})) return false;
  return MessageBoxW(owner, question, LoadLocalizedString(OwnModule(), IDS_DELETE_FILE),
                     MB_YESNO | MB_SETFOREGROUND) == IDYES;
}

}  // namespace kelvo
