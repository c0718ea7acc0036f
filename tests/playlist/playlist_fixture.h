#pragma once

#include <gtest/gtest.h>

#include <string>

#include "playlist/playlist_files.h"
#include "tests/support/fake_information.h"
#include "tests/support/memory_files.h"

namespace kelvo::test {

class PlaylistFixture : public testing::Test {
 protected:
  // Paths of the list's entries, each followed by a blank; every one is flagged.
  std::string Paths() const {
    std::string all;
    for (const MediaEntry& entry : list_) {
      all += Utf8(entry.path.c_str()) + " ";
      EXPECT_EQ(entry.item, kEntryFlag);
    }
    return all;
  }
  std::string Added(const std::string& path, NestingGuard* guard = nullptr) {
    list_.Clear();
    AddPath({files_, information_, guard}, Wide(path), &list_);
    EXPECT_EQ(files_.open_now, 0);
    return Paths();
  }

  MemoryFiles files_;
  FakeInformation information_;
  EntryList list_;
};

}  // namespace kelvo::test
