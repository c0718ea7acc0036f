#include "host/player/settings.h"

#include <stdlib.h>

#include "host/player/skin/skin_loader.h"
#include "host/system.h"

namespace velmora {
namespace {

constexpr wchar_t kArchive[] = L".zip";
constexpr wchar_t kDefaultSkin[] = L"default";

class LibrarySkin final : public SkinFiles {
 public:
  LibrarySkin(const Library& library, const std::wstring& path)
      : reader_(library.Get<kelvo::SkinReader>(kelvo::kFeatureSkinReader)), path_(path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    exists_ = attributes != INVALID_FILE_ATTRIBUTES;
    is_folder_ = exists_ && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  }

  bool Read(kelvo::SkinFile file, std::string* bytes) override {
    if (!reader_ || !exists_) return false;
    uint32_t size = 0;
    void* block = is_folder_ ? reader_->ReadFromFolder(path_.c_str(), file, &size)
                             : reader_->ReadFromArchive(path_.c_str(), file, &size);
    if (!block) return false;
    bytes->assign(static_cast<const char*>(block), size);
    free(block);
    return true;
  }

  bool is_folder() const { return is_folder_; }

 private:
  kelvo::SkinReader* reader_;
  std::wstring path_;
  bool exists_;
  bool is_folder_;
};

bool EndsInZip(const std::wstring& path) {
  return path.size() > 4 && lstrcmpiW(path.c_str() + path.size() - 4, kArchive) == 0;
}

}  // namespace

bool ReadSkin(const Library& library, const std::wstring& path, const Skin& base, Skin* skin) {
  LibrarySkin files(library, path);
  if (!IsSkin(files)) return false;
  *skin = LoadSkin(files, base);
  return true;
}

bool LooksLikeSkin(const Library& library, const std::wstring& path) {
  LibrarySkin files(library, path);
  std::string main;
  return (files.is_folder() && files.Read(kelvo::kSkinMain, &main)) ||
         (!files.is_folder() && EndsInZip(path) && IsSkin(files));
}

std::wstring SkinFolder() {
  return ProgramFolder() + L"\\skins";
}

std::vector<std::wstring> FindSkins() {
  std::vector<std::wstring> paths;
  WIN32_FIND_DATAW found;
  const HANDLE search = FindFirstFileW((SkinFolder() + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return paths;
  do {
    const std::wstring name = found.cFileName;
    const bool folder = (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (name == L"." || name == L"..") continue;
    if (name == kDefaultSkin || name == std::wstring(kDefaultSkin) + kArchive) continue;
    if (folder || EndsInZip(name)) paths.push_back(SkinFolder() + L"\\" + name);
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return paths;
}

Skin DefaultSkin(const Library& library) {
  Skin skin;
  const std::wstring path = SkinFolder() + L"\\" + kDefaultSkin;
  if (!ReadSkin(library, path, Skin(), &skin)) ReadSkin(library, path + kArchive, Skin(), &skin);
  return skin;
}

}  // namespace velmora
