#pragma once

#include <map>
#include <string>

#include "catalog/media/add_entry.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {

// Input plug-ins that know the files told to them.
class FakeInformation final : public MediaInformation {
 public:
  struct Texts {
    std::string title, artist, album, genre;
  };
  std::map<std::string, Texts> known;  // by path
  bool wma_available = true;
  std::string asked;  // "ogg C:\a.ogg;" and so on

  bool OggInformation(const wchar_t* path, MediaTexts* texts) noexcept override {
    return Answer("ogg ", path, texts);
  }
  bool WmaInformation(const wchar_t* path, MediaTexts* texts) noexcept override {
    return Answer("wma ", path, texts);
  }
  bool WmaAvailable() noexcept override { return wma_available; }

 private:
  bool Answer(const char* kind, const wchar_t* path, MediaTexts* out) {
    asked += kind + Utf8(path) + ";";
    const auto found = known.find(Utf8(path));
    if (found == known.end()) return false;
    CopyWide(out->title, kTextCapacity, Wide(found->second.title));
    CopyWide(out->artist, kTextCapacity, Wide(found->second.artist));
    CopyWide(out->album, kTextCapacity, Wide(found->second.album));
    CopyWide(out->format.genre, 32, Wide(found->second.genre));
    return true;
  }
};

}  // namespace kelvo::test
