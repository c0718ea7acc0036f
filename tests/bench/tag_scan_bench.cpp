// Entries with tags of 10,000 MPEG files, against a loop that only opens each, reads its last 128
// bytes and closes it.
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "catalog/media/add_entry.h"
#include "tests/bench/measure.h"
#include "tests/support/fake_information.h"
#include "tests/support/id3v1_tag.h"
#include "tests/support/wide_text.h"

namespace {

constexpr int kFiles = 10000;
constexpr char kFolder[] = "bench_tags.tmp";

void BareLoop(const std::vector<std::string>& names) {
  char tag[128];
  for (const std::string& name : names) {
    const int file = open(name.c_str(), O_RDONLY);
    if (file < 0 || lseek(file, -128, SEEK_END) < 0 || read(file, tag, 128) != 128) abort();
    close(file);
  }
}

}  // namespace

int main() {
  kelvo::test::FakeInformation no_plugins;
  std::filesystem::create_directories(kFolder);
  std::vector<std::string> names;
  std::vector<kelvo::test::Wide> paths;
  for (int i = 0; i < kFiles; ++i) {
    const std::string name = std::to_string(i) + ".mp3";
    names.push_back(std::string(kFolder) + "/" + name);
    paths.emplace_back(std::string(kFolder) + "\\" + name);
    std::ofstream(names.back(), std::ios::binary)
        << std::string(4000, 'a') << kelvo::test::Id3v1Tag("Title " + name, "Artist", "Album", 17);
  }
  size_t tagged = 0;
  kelvo::bench::Compare(
      "tag scan, 10,000 files", 1.25,
      [&] {
        kelvo::EntryList list;
        for (const auto& path : paths) {
          kelvo::AddMediaEntry(kelvo::MediaKind::kMpeg, kelvo::SystemFiles(), no_plugins, path,
                               &list);
        }
        tagged = 0;
        for (const kelvo::MediaEntry& entry : list) tagged += entry.tag ? 1 : 0;
      },
      [&] { BareLoop(names); });
  std::filesystem::remove_all(kFolder);
  return tagged == kFiles ? 0 : 1;
}
