// Playlists, bookmarks and presets. Beside a playlist lies "a.mp3".
#include "tests/hostile/corpus.h"
#include "tests/support/wide_text.h"

namespace kelvo::hostile {

using test::Utf16;

namespace {
std::string Times(size_t count, const std::string& text) {
  std::string all;
  for (size_t i = 0; i < count; ++i) all += text;
  return all;
}
}  // namespace

Corpus M3uFiles() {
  return {
      {"whole", "#EXTM3U\r\na.mp3\r\n", "1"},
      {"empty", "", "0"},
      {"no line end", "a.mp3", "1"},
      {"only line ends", Times(70000, "\r\n"), "0"},
      {"lone returns", "a.mp3\ra.mp3\r", "0"},
      {"a line of a megabyte", std::string(1000000, 'x') + "\na.mp3\n", "1"},
      {"259 and a name", std::string(259, 'x') + "a.mp3\n", "1"},
      {"258 and a name", std::string(258, 'x') + "a.mp3\n", "0"},
      {"a NUL in a line", std::string("a.mp3\0x\na.mp3\n", 14), "2"},
      {"an end-of-text character", "a.mp3\n\x1A\na.mp3\n", "1"},
      {"a byte order mark",
       "\xEF\xBB\xBF"
       "a.mp3\na.mp3\n",
       "1"},
      {"folders that lead out", "..\\..\\..\\a.mp3\n\\\\x\\y\\a.mp3\nhttp://x/a.mp3\n", "0"},
      {"patterns", "*.mp3\n?.mp3\n|.mp3\n", "0"},
      {"itself", "a.mp3\nfile.m3u\nFILE.M3U\na.mp3\n", "2"},
      {"itself 2,000 times", Times(2000, "file.m3u\n") + "a.mp3\n", "1"},
      {"all bytes",
       [] {
         std::string s;
         for (int i = 0; i < 256; ++i) s += char(i ^ 0x80);
         return s + "\na.mp3";
       }(),
       "0"},
  };
}

Corpus PlsFiles() {
  std::string numbered;
  for (int i = 1; i <= 300; ++i) numbered += "File" + std::to_string(i) + "=@a.mp3\n";
  return {
      {"whole", "[playlist]\r\nFile1=@a.mp3\r\nTitle1=x\r\nFile2=@a.mp3\r\nNumberOfEntries=2\r\n",
       "2"},
      {"empty", "", "0"},
      {"numbers that go up", numbered, "300"},
      {"numbers that jump", "File1=@a.mp3\nFile3=@a.mp3\nFile2=@a.mp3\nFile3=@a.mp3\n", "3"},
      {"numbers from 0", "File0=@a.mp3\nFile1=@a.mp3\n", "1"},
      {"numbers beyond 32 bits",
       "File4294967297=@a.mp3\nFile-1=@a.mp3\nFile18446744073709551617=@a.mp3\n", "0"},
      {"keys in other case", "fILE1=@a.mp3\n", "1"},
      {"blanks at the sign", "File1 =@a.mp3\nFile1= @a.mp3\nFile2=@a.mp3\n", "1"},
      {"brackets", "[File1=@a.mp3\n]File1=@a.mp3\n", "0"},
      {"no value", "File1=\nFile2\nFile2=@a.mp3\n", "1"},
      {"never in the folder", "File1=a.mp3\n", "0"},
      {"a long value", "File1=" + std::string(300, 'v') + "\nFile2=@a.mp3\n", "1"},
      {"itself", "File1=@file.pls\nFile2=@a.mp3\n", "1"},
  };
}

Corpus AsxFiles() {
  const std::string ref = "<ref href=\"a.mp3\"/>";
  return {
      {"whole", "<ASX>\r\n" + ref + "\r\n</ASX>", "1"},
      {"empty", "", "0"},
      {"no end of the value", "<ref href=\"a.mp3\n" + ref, "1"},
      {"no value", "<ref href=>\n<ref href\n<ref hre\n<", "0"},
      {"single quotes", "<ref href='a.mp3'/>", "0"},
      {"quotes without end", std::string(1000, '"') + "\n" + ref, "1"},
      {"tags without end", Times(1000, "<ref ") + "\n" + ref, "1"},
      {"two blanks", "<ref  href=\"a.mp3\"/>", "0"},
      {"two on a line", ref + ref, "1"},
      {"across lines", "<ref\nhref=\"a.mp3\"/>", "0"},
      {"a backslash behind the value", "<ref href=\"a.mp3\"/>\\", "0"},
      {"itself", "<ref href=\"file.asx\"/>\n" + ref, "1"},
      {"a NUL in the tag", std::string("<ref\0 href=\"a.mp3\"/>\n", 21) + ref, "1"},
  };
}

Corpus BookmarkFiles() {
  const std::string one = Utf16("\\p\r\n5\r\nd\r\n");
  return {
      {"whole", one + Utf16("\\q\r\n90\r\n\r\n"), "\\p|5|d;\\q|90|;"},
      {"empty", "", ""},
      {"one byte", "x", ""},
      {"an odd byte at the end", one + "x", "\\p|5|d;"},
      {"a mark in front", "\xFF\xFE" + one, "\xEF\xBB\xBF\\p|5|d;"},
      {"8-bit text", "\\p\r\n5\r\nd\r\n", ""},
      {"path alone", Utf16("\\p\r\n"), ""},
      {"no position", Utf16("\\p\r\nx\r\nd\r\n"), "\\p|0|d;"},
      {"positions beyond 32 bits", Utf16("\\p\r\n99999999999\r\nd\r\n\\q\r\n-99999999999\r\nd\r\n"),
       "\\p|2147483647|d;\\q|-2147483648|d;"},
      {"an empty path", one + Utf16("\r\n5\r\nd\r\n") + one, "\\p|5|d;"},
      {"a NUL first", one + std::string("\0\0", 2) + one, "\\p|5|d;"},
      {"lone returns", Utf16("\\p\rx5\rxd\rx"), "\\p|5|d;"},
      {"a megabyte without a line end", Utf16(std::string(500000, 'x')), ""},
      {"long lines",
       Utf16(std::string(300, 'p') + "\r\n5\r\n" + std::string(70000, 'd') +
             "\r\n\\q\r\n6\r\ne\r\n"),
       std::string(259, 'p') + "|5|" + std::string(259, 'd') + ";\\q|6|e;"},
      {"half a character", Utf16("\\p\r\n5\r\n") + std::string("\x00\xD8", 2),
       "\\p|5|\xED\xA0\x80;"},
      {"1,000 records", Times(1000, one), Times(1000, "\\p|5|d;")},
  };
}

Corpus PresetFiles() {
  const std::string setting = "eleven byte";
  return {
      {"whole", std::string(20, '\0') + setting, setting},
      {"empty", "", "no"},
      {"no setting", std::string(20, 'n'), "no"},
      {"a byte too short", std::string(20, 'n') + setting.substr(1), "no"},
      {"a name without end", std::string(20, '\xFF') + setting, setting},
      {"more behind it", std::string(20, 'n') + setting + std::string(1000000, 'x'), setting},
      {"every value", std::string(20, '\0') + "\xFF\x80\x7F\x01\x02\x03\x04\x05\x06\x07\x08",
       "\xFF\x80\x7F\x01\x02\x03\x04\x05\x06\x07\x08"},
  };
}

}  // namespace kelvo::hostile
