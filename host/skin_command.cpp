// velmora skin: the files of a skin, out of a folder or a zip archive.
#include <kelvo/skin_reader.h>
#include <stdlib.h>

#include "host/command.h"
#include "host/console.h"

namespace velmora {
namespace {

class Skin {
 public:
  Skin(kelvo::SkinReader& reader, const std::wstring& path) : reader_(reader), path_(path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    exists_ = attributes != INVALID_FILE_ATTRIBUTES;
    is_folder_ = exists_ && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  }
  bool exists() const { return exists_; }
  // To be freed with free(); null when the skin has no such file.
  void* Read(int32_t number, uint32_t* bytes) const {
    return is_folder_ ? reader_.ReadFromFolder(path_.c_str(), number, bytes)
                      : reader_.ReadFromArchive(path_.c_str(), number, bytes);
  }

 private:
  kelvo::SkinReader& reader_;
  std::wstring path_;
  bool exists_;
  bool is_folder_;
};

void ListSizes(const Skin& skin) {
  for (int32_t number = kelvo::kSkinBalance; number <= kelvo::kSkinVolume; ++number) {
    uint32_t bytes = 0;
    void* block = skin.Read(number, &bytes);
    const char* name = kelvo::SkinFileName(number);
    if (block) {
      Print(L"%2d  %-12hs  %8u bytes\n", number, name, bytes);
    } else {
      Print(L"%2d  %-12hs         -\n", number, name);
    }
    free(block);
  }
}

bool WriteFileTo(const std::wstring& path, const void* data, uint32_t bytes) {
  const HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  const bool ok = WriteFile(file, data, bytes, &written, nullptr) && written == bytes;
  CloseHandle(file);
  return ok;
}

}  // namespace

int SkinCommand(const Library& library, const Words& words) {
  auto* reader = library.Get<kelvo::SkinReader>(kelvo::kFeatureSkinReader);
  if (!reader) {
    PrintError(L"Kelvo.dll does not offer skins\n");
    return 1;
  }
  if (words.empty() || words.size() > 3) {
    PrintError(L"usage: velmora skin PATH [N [OUT]]\n");
    return 1;
  }
  const Skin skin(*reader, words[0]);
  if (!skin.exists()) {
    PrintError(L"%ls: no such skin\n", words[0].c_str());
    return 1;
  }
  if (words.size() == 1) {
    ListSizes(skin);
    return 0;
  }
  const int32_t number = static_cast<int32_t>(wcstol(words[1].c_str(), nullptr, 10));
  uint32_t bytes = 0;
  void* block = skin.Read(number, &bytes);
  if (!block) {
    PrintError(L"%ls: has no readable file of number %ls\n", words[0].c_str(), words[1].c_str());
    return 1;
  }
  const std::string name = kelvo::SkinFileName(number);
  const std::wstring out = words.size() == 3 ? words[2] : std::wstring(name.begin(), name.end());
  const bool written = WriteFileTo(out, block, bytes);
  free(block);
  if (written) {
    Print(L"%u bytes written to %ls\n", bytes, out.c_str());
  } else {
    PrintError(L"%ls: cannot be written\n", out.c_str());
  }
  return written ? 0 : 1;
}

}  // namespace velmora
