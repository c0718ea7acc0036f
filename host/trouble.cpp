#include "host/trouble.h"

#include <windows.h>

#include "host/input.h"
#include "host/texts.h"

namespace velmora {
namespace {

bool InCodePage(const std::wstring& text) {
  if (GetACP() == CP_UTF8) return true;
  BOOL replaced = FALSE;
  char bytes[4 * kelvo::kMaxText];
  return WideCharToMultiByte(CP_ACP, 0, text.c_str(), -1, bytes, sizeof bytes, nullptr, &replaced) >
             0 &&
         !replaced;
}

Trouble TroubleOfFile(const std::wstring& path) {
  MediaFile file;
  if (!file.Open(path.c_str(), 0)) return Trouble::kUnreadable;
  return file.Seek(0, kelvo::kSeekEnd) == 0 ? Trouble::kEmpty : Trouble::kDamaged;
}

}  // namespace

Trouble TroubleOf(const Library& library, const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return Trouble::kMissing;
  if (attributes & FILE_ATTRIBUTE_DIRECTORY) return Trouble::kFolder;
  if (!Input::IsMedia(path)) return Trouble::kOtherKind;
  const Input input(library, path);
  if (input.Missing()) return Trouble::kNotOffered;
  if (input.has_own_output() && !InCodePage(path)) return Trouble::kName;
  return TroubleOfFile(path);
}

std::wstring Describe(Trouble trouble) {
  switch (trouble) {
    case Trouble::kNone:
      return L"";
    case Trouble::kMissing:
      return Text(TEXT_TROUBLE_MISSING);
    case Trouble::kFolder:
      return Text(TEXT_TROUBLE_FOLDER);
    case Trouble::kUnreadable:
      return Text(TEXT_TROUBLE_UNREADABLE);
    case Trouble::kEmpty:
      return Text(TEXT_TROUBLE_EMPTY);
    case Trouble::kOtherKind:
      return Text(TEXT_TROUBLE_OTHER_KIND);
    case Trouble::kNotOffered:
      return Text(TEXT_TROUBLE_NOT_OFFERED);
    case Trouble::kName:
      return Text(TEXT_TROUBLE_NAME);
    case Trouble::kDamaged:
      return Text(TEXT_TROUBLE_DAMAGED);
  }
  return L"";
}

}  // namespace velmora
