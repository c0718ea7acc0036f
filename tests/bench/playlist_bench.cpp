// Playlists of 100,000 lines, read as far as the paths of their entries (no look at the files named
// and no tags), against a loop of fgets over the same file.
#include <stdio.h>
#include <stdlib.h>

#include <string>

#include "playlist/expansion.h"
#include "tests/bench/measure.h"
#include "tests/support/wide_text.h"

namespace {

constexpr int kLines = 100000;

class Counter final : public kelvo::PathSink {
 public:
  void AddMedia(kelvo::MediaKind, const wchar_t* path,
                const kelvo::ListPosition*) noexcept override {
    ++entries;
    sum += static_cast<size_t>(path[0]);
  }
  int entries = 0;
  size_t sum = 0;
};

void Write(const char* name, const char* head, const char* format) {
  FILE* file = fopen(name, "wb");
  if (!file) abort();
  fputs(head, file);
  for (int i = 1; i <= kLines; ++i) fprintf(file, format, i, i);
  fclose(file);
}

size_t FgetsLoop(const char* name) {
  FILE* file = fopen(name, "r");
  if (!file) abort();
  char line[260];
  size_t sum = 0;
  while (fgets(line, sizeof(line), file)) sum += static_cast<unsigned char>(line[0]);
  fclose(file);
  return sum;
}

// True when every entry was found.
bool Measure(const char* name, const char* head, const char* format) {
  Write(name, head, format);
  const kelvo::test::Wide path(std::string(".\\") + name);
  int entries = 0;
  volatile size_t sum = 0;
  kelvo::bench::Compare(
      name, 3.0,
      [&] {
        Counter counter;
        kelvo::ExpandPath(kelvo::SystemFiles(), path, nullptr, counter);
        entries = counter.entries;
        sum = sum + counter.sum;
      },
      [&] { sum = sum + FgetsLoop(name); });
  remove(name);
  return entries == kLines;
}

}  // namespace

int main() {
  bool complete = Measure("bench.m3u", "#EXTM3U\r\n", "\\My Music\\Album %d\\Song %06d.mp3\r\n");
  complete &= Measure("bench_short.m3u", "", "Song %d%d.mp3\r\n");
  complete &= Measure("bench.pls", "[playlist]\r\n", "File%d=\\My Music\\Song %06d.mp3\r\n");
  complete &= Measure("bench.asx", "<ASX version=\"3.0\">\r\n",
                      "<ENTRY><REF HREF=\"\\My Music\\Album %d\\Song %06d.mp3\" /></ENTRY>\r\n");
  return complete ? 0 : 1;
}
