// Files of skins, out of folders and archives.
#include <stdlib.h>

#include <array>

#include "host/check/subject.h"

namespace velmora::check {
namespace {

constexpr const char* kNames[] = KELVO_SKIN_FILE_NAMES;
constexpr char kNothing[] = "nothing";

std::string Word(uint32_t value, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>(value >> (8 * i));
  return text;
}

uint32_t Checksum(const std::string& bytes) {
  uint32_t sum = 0xFFFFFFFF;
  for (const char byte : bytes) {
    sum ^= static_cast<uint8_t>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ (sum & 1 ? 0xEDB88320 : 0);
  }
  return ~sum;
}

// An archive of members that are stored as they are; a damaged one's checksum is wrong.
class Archive {
 public:
  void Add(const std::string& name, const std::string& content, bool damaged = false) {
    const auto size = static_cast<uint32_t>(content.size());
    const std::string common = Word(10, 2) + Word(0, 4) + Word(0x21, 4) +
                               Word(Checksum(content) ^ damaged, 4) + Word(size, 4) +
                               Word(size, 4) + Word(static_cast<uint32_t>(name.size()), 2);
    directory_ += "PK\1\2" + Word(10, 2) + common + Word(0, 12) +
                  Word(static_cast<uint32_t>(members_.size()), 4) + name;
    members_ += "PK\3\4" + common + Word(0, 2) + name + content;
    ++count_;
  }
  std::string Bytes() const {
    return members_ + directory_ + "PK\5\6" + Word(0, 4) + Word(count_, 2) + Word(count_, 2) +
           Word(static_cast<uint32_t>(directory_.size()), 4) +
           Word(static_cast<uint32_t>(members_.size()), 4) + Word(0, 2);
  }

 private:
  std::string members_, directory_;
  uint32_t count_ = 0;
};

class Skins {
 public:
  explicit Skins(const Subject& subject)
      : skins_(subject.Get<KelvoSkinReader>(KELVO_FEATURE_SKIN_READER)) {}

  std::string Folder(const std::wstring& path, int32_t number) {
    uint32_t size = 99;
    void* block = skins_->table->ReadFromFolder(KELVO_ON(skins_), path.c_str(), number, &size);
    return Taken(block, size);
  }
  std::string Archived(const std::wstring& path, int32_t number) {
    uint32_t size = 99;
    void* block = skins_->table->ReadFromArchive(KELVO_ON(skins_), path.c_str(), number, &size);
    return Taken(block, size);
  }

 private:
  static std::string Taken(void* block, uint32_t size) {
    if (!block) return size == 0 ? kNothing : "no block, but a size";
    const std::string bytes(static_cast<char*>(block), size);
    free(block);
    return bytes;
  }

  KelvoSkinReader* skins_;
};

}  // namespace

void CheckSkins(const Subject& subject, Report& report) {
  report.Begin("Skins");
  Skins skins(subject);
  const std::wstring folder = subject.work + L"skin", bare = subject.work + L"bare";
  const std::wstring archive = subject.work + L"skin.zip", other = subject.work + L"other.zip";
  CreateDirectoryW(folder.c_str(), nullptr);
  CreateDirectoryW(bare.c_str(), nullptr);
  Archive all;
  for (const char* name : kNames) {
    const std::string text = name;
    WriteBytes(folder + L"\\" + std::wstring(text.begin(), text.end()), "file " + text);
    if (text != "viscolor.txt") all.Add(text, "member " + text, text == "volume.bmp");
  }
  WriteBytes(archive, all.Bytes());
  WriteBytes(bare + L"\\pledit.txt", "");
  WriteBytes(other, "no archive");

  bool folders = true, archives = true;
  for (int32_t number = 1; number <= KELVO_SKIN_FILE_COUNT; ++number) {
    const std::string name = kNames[number - 1];
    folders &= skins.Folder(folder, number) == "file " + name;
    if (number == KELVO_SKIN_COLOURS || number == KELVO_SKIN_VOLUME) continue;
    archives &= skins.Archived(archive, number) == "member " + name;
  }
  report.Says("The numbers 1 to 17 read their files out of a folder, byte for byte", folders);
  report.Says("An empty file is a block of size 0",
              skins.Folder(bare, KELVO_SKIN_PLAYLIST_TEXT).empty());
  report.Says("A file that the folder lacks is null and size 0",
              skins.Folder(bare, KELVO_SKIN_MAIN) == kNothing);
  report.Says("A folder that is not there is null and size 0",
              skins.Folder(subject.work + L"none", KELVO_SKIN_MAIN) == kNothing);
  report.Says("The numbers read their members out of a zip archive, byte for byte", archives);
  report.Says("A member that the archive lacks is null and size 0",
              skins.Archived(archive, KELVO_SKIN_COLOURS) == kNothing);
  report.Says("A damaged member is null and size 0",
              skins.Archived(archive, KELVO_SKIN_VOLUME) == kNothing);
  report.Says("What is no archive is null and size 0",
              skins.Archived(other, KELVO_SKIN_MAIN) == kNothing &&
                  skins.Archived(folder, KELVO_SKIN_MAIN) == kNothing &&
                  skins.Archived(subject.work + L"none.zip", KELVO_SKIN_MAIN) == kNothing);
  bool outside = true;
  for (const int32_t number : {0, -1, 18, INT32_MIN, INT32_MAX}) {
    outside &= skins.Folder(folder, number) == kNothing;
    outside &= skins.Archived(archive, number) == kNothing;
  }
  report.Says("A number outside 1 to 17 is null and size 0", outside);
}

}  // namespace velmora::check
