#include "host/trouble.h"

#include <windows.h>

#include "host/input.h"

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

const wchar_t* Describe(Trouble trouble) {
  switch (trouble) {
    case Trouble::kNone:
      return L"";
    case Trouble::kMissing:
      return L"no such file";
    case Trouble::kFolder:
      return L"a folder, not a file";
    case Trouble::kUnreadable:
      return L"cannot be read";
    case Trouble::kEmpty:
      return L"an empty file";
    case Trouble::kOtherKind:
      return L"cannot be played, neither .ogg nor .wma";
    case Trouble::kNotOffered:
      return L"cannot be played, the library lacks what plays it";
    case Trouble::kName:
      return L"its name has letters that the system's code page lacks";
    case Trouble::kDamaged:
      return L"damaged, or not what its name says";
  }
  return L"";
}

}  // namespace velmora
