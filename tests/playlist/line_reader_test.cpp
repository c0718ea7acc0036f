#include "playlist/line_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/faults.h"

namespace kelvo {
namespace {

using test::FailingSource;

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

TEST(LineReaderTest, ReadsLikeTextModeAndSplitsLongLines) {
  const std::string x258(258, 'x'), x259(259, 'x');
  const struct {
    const char* name;
    std::string text, want;
  } kCases[] = {
      {"empty", "", ""},
      {"no final newline", "a\nb", "[a][b]"},
      {"final newline", "a\n", "[a]"},
      {"CR LF", "a\r\n\r\nb\r\n", "[a][][b]"},
      {"CR only", "a\rb\r", "[a\rb\r]"},
      {"CR CR LF", "a\r\r\nb", "[a\r][b]"},
      {"LF CR", "a\n\rb", "[a][\rb]"},
      {"NUL ends a line's text", std::string("a\0b\nc", 5), "[a][c]"},
      {"NUL only", std::string("\0\n", 2), "[]"},
      {"NUL in a later line", std::string("a\nb\0c\nd\n", 8), "[a][b][d]"},
      {"end-of-text character",
       "a\nb\x1A"
       "c\nd",
       "[a][b]"},
      {"end-of-text first", "\x1A", ""},
      {"byte order mark",
       "\xEF\xBB\xBF"
       "a\n",
       "[\xEF\xBB\xBF"
       "a]"},
      {"258 and LF", x258 + "\nb", "[" + x258 + "][b]"},
      {"258 and CR LF", x258 + "\r\nb", "[" + x258 + "][b]"},
      {"258, CR and more", x258 + "\rb\n", "[" + x258 + "\r+][b]"},
      {"258, CR and the end", x258 + "\r", "[" + x258 + "\r+]"},
      {"259 and LF", x259 + "\nb", "[" + x259 + "+][][b]"},
      {"259 and CR LF", x259 + "\r\nb", "[" + x259 + "+][][b]"},
      {"259 and the end", x259, "[" + x259 + "+]"},
      {"260", x259 + "y\n", "[" + x259 + "+][y]"},
      {"261", x259 + "yz\n", "[" + x259 + "+][yz]"},
      {"NUL in a long line", std::string("a\0", 2) + std::string(257, 'x') + "b", "[a+][b]"},
  };
  for (const auto& c : kCases) EXPECT_EQ(Lines(c.text), c.want) << c.name;
  const std::string million = Lines(std::string(1000000, 'm'));
  EXPECT_EQ(million.size(), 1000000u + 3862 * 3 - 1) << "3862 pieces, the last one not full";
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

}  // namespace
}  // namespace kelvo
