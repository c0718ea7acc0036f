#include <gtest/gtest.h>

#include <string>

#include "playlist/line_reader.h"
#include "playlist/list_entry.h"
#include "tests/support/code_page.h"
#include "tests/support/faults.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::FailingSource;
using test::Utf8;
using test::Wide;

// A line in brackets; "+" marks one that continues.
std::string Shown(const TextLine& line) {
  return "[" + std::string(line.text, line.length) + (line.continues ? "+]" : "]");
}

std::string Lines(FailingSource& source, uint64_t offset = 0) {
  LineReader reader;
  reader.Start(&source, offset);
  std::string all;
  TextLine line;
  while (reader.Next(&line)) {
    all += Shown(line);
  }
  EXPECT_FALSE(reader.Next(&line)) << "the end stays the end";
  return all;
}

std::string Lines(const std::string& text) {
  FailingSource source(text, -1);
  return Lines(source);
}

// However the chunks of the reader fall, the lines are those of a plain loop over the bytes.
TEST(LineReaderTest, GivesTheSameLinesAcrossChunks) {
  for (size_t before = 4080; before < 4110; ++before) {
    std::string text;
    while (text.size() + 60 < before) text += std::string(59, 'a') + "\n";
    text += std::string(before - text.size(), 'b') + "\r\nlast line\r\n" + std::string(300, 'c');
    std::string want;
    for (size_t at = 0; at < text.size();) {
      size_t end = text.find('\n', at);
      end = end == std::string::npos ? text.size() : end;
      std::string line = text.substr(at, end - at);
      at = end + 1;
      if (!line.empty() && line.back() == '\r') line.pop_back();
      want += line.size() > 259 ? "[" + line.substr(0, 259) + "+][" + line.substr(259) + "]"
                                : "[" + line + "]";
    }
    EXPECT_EQ(Lines(text), want) << before;
  }
}

TEST(LineReaderTest, GoesOnWhereAnotherReaderStopped) {
  const std::string text = "one\r\ntwo\n" + std::string(5000, 'x') + "\nlast\n";
  FailingSource source(text, -1);
  LineReader reader;
  reader.Start(&source, 0);
  const std::string whole = Lines(text);
  std::string seen;
  TextLine line;
  while (reader.Next(&line)) {
    seen += Shown(line);
    EXPECT_EQ(seen + Lines(source, reader.offset()), whole);
  }
  reader.Start(nullptr, 0);
  EXPECT_FALSE(reader.Next(&line));
}

TEST(LineReaderTest, DropsTheLineThatAReadCutsOff) {
  const std::string text = std::string(4000, '\n') + std::string(200, 'x') + "\ny\n";
  const std::string whole = Lines(text);
  test::Sweep([&](long n) {
    FailingSource source(text, n);
    const std::string lines = Lines(source);
    EXPECT_EQ(lines, n == 0 ? "" : n == 1 ? whole.substr(0, 8000) : whole);
    return source.triggered();
  });
}

TEST(ListPathTest, GoesThroughTheCodePage) {
  const struct {
    std::string path, want;
    bool ok;
  } kCases[] = {
      {"C:\\Music\\list.m3u", "C:\\Music\\", true},
      {"\\list.m3u", "\\", true},
      {"list.m3u", "", true},
      {"a/list.m3u", "", true},
      {"\\\u00E9\\x.pls", "\\\xE9\\", true},
      {"\\\u4E2D\\x.pls", "", false},
      {"\\" + std::string(258, 'x'), "\\", true},
      {"\\" + std::string(259, 'x'), "", false},
  };
  test::CodePage code_page(1252);
  for (const auto& c : kCases) {
    ListPath list;
    EXPECT_EQ(ToListPath(Wide(c.path), &list), c.ok) << c.path;
    if (!c.ok) continue;
    EXPECT_EQ(std::string(list.folder, list.folder_length), c.want);
    EXPECT_EQ(Utf8(list.path), c.path);
  }
}

TEST(PlaylistExtensionTest, KnowsWhatTheSaveDialogLists) {
  const struct {
    const wchar_t* path;
    int32_t want;
  } kCases[] = {
      {L"a.m3u", 3},  {L"\\d\\A.PLS", 3}, {L".m3u", 3},    {L"a.b.Pls", 3},
      {L"a.asx", -1}, {L"m3u", -1},       {L"a.m3u8", -1}, {L"", -1},
  };
  for (const auto& c : kCases) EXPECT_EQ(PlaylistExtension(c.path), c.want) << Utf8(c.path);
}

}  // namespace
}  // namespace kelvo
