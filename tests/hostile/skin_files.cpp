#include "tests/host/views/bmp_builder.h"
#include "tests/hostile/corpus.h"
#include "tests/support/zip_builder.h"

namespace kelvo::hostile {

using test::Le;
using test::ZipBuilder;
using test::ZipMember;

Corpus Archives() {
  const auto member = [](void (*lie)(ZipMember*) = nullptr) {
    ZipMember made{"main.bmp", "BM picture BM picture BM picture"};
    if (lie) lie(&made);
    return made;
  };
  // The other member is never read in its place.
  const auto lying = [&](void (*lie)(ZipMember*)) {
    return ZipBuilder().Add({"MAIN.BMP", "x"}).Add(member(lie)).Bytes();
  };
  const std::string content = member().content, none = "no";
  const std::string whole = ZipBuilder().Add(member()).Bytes();
  const std::string end = ZipBuilder().Bytes();
  ZipBuilder two, many, folder, outside, bomb;
  two.Add({"other", "x"}).Add(member());
  many.Add({"n", "", false}).Repeat(65534).Add(member());
  folder.Add({"Skin/MAIN.bmp", "behind a folder"});
  outside.Add({"..\\..\\main.bmp", "x"})
      .Add({"a/b/main.bmp", "x"})
      .Add({std::string(60000, 'n'), "x"});
  bomb.Add({"main.bmp", std::string((16u << 20) + 1, '\0')});
  return {
      {"whole", whole, content},
      {"empty", "", none},
      {"no member", end, none},
      {"end upon end", end + end, none},
      {"only marks", std::string(70000, 'P'), none},
      {"cut in the data", whole.substr(0, 40), none},
      {"cut in the end", whole.substr(0, whole.size() - 1), none},
      {"something behind it", whole + "\r\n", content},
      {"a comment cut off", whole.substr(0, whole.size() - 2) + Le(9, 2) + "comment", content},
      {"something in front", std::string(5000, 'x') + whole, content},
      {"a comment with an end in it", ZipBuilder().Add(member()).Bytes("x" + end + "PPPP"),
       content},
      {"the directory cut off", whole.substr(0, whole.find("PK\x01\x02")) + end, none},
      {"encrypted", lying([](ZipMember* m) { m->flags = 1; }), none},
      {"wrong checksum", lying([](ZipMember* m) { m->crc = 0x12345678; }), none},
      {"unknown method", lying([](ZipMember* m) { m->method = 12; }), none},
      {"said to be stored", lying([](ZipMember* m) { m->method = 0; }), none},
      {"stored, said to be packed", lying([](ZipMember* m) { m->deflated = false, m->method = 8; }),
       none},
      {"smaller than it says", lying([](ZipMember* m) { m->size = 100; }), none},
      {"larger than it says", lying([](ZipMember* m) { m->size = 10; }), none},
      {"4 GB", lying([](ZipMember* m) { m->size = 0xFFFFFFFF; }), none},
      {"packed into nothing", lying([](ZipMember* m) { m->packed_size = 0; }), none},
      {"another name in front of the data", lying([](ZipMember* m) { m->local_name = "other"; }),
       none},
      {"64-bit size cut off",
       lying([](ZipMember* m) { m->size = 0xFFFFFFFF, m->extra = Le(1, 2); }), none},
      {"64-bit size beyond the limit", lying([](ZipMember* m) {
         m->size = 0xFFFFFFFF, m->extra = Le(1, 2) + Le(8, 2) + Le(~0ull, 8);
       }),
       none},
      {"sizes behind the data", lying([](ZipMember* m) { m->streamed = true; }), content},
      {"17 MB out of 17 KB", bomb.Bytes(), none},
      {"the second of two, one counted", two.Bytes("", 1), none},
      {"more counted than there are", two.Bytes("", 65534), content},
      {"64 bits, 2^64 members", two.Bytes64(~0ull, 0), none},
      {"64 bits, a directory at 2^63", two.Bytes64(2, 1ull << 63), none},
      {"behind 65,535 others", many.Bytes64(), none},
      {"behind a folder", folder.Bytes(), "behind a folder"},
      {"names that lead out", outside.Bytes(), none},
  };
}

Corpus Bitmaps() {
  using velmora::test::BmpBuilder;
  const auto changed = [](void (*change)(BmpBuilder*)) {
    BmpBuilder bmp;
    bmp.bits = 8;
    bmp.palette = {0, 0xFF0000};
    bmp.pixels = std::string("\1\0\0\0\1\1\0\0", 8);
    change(&bmp);
    return bmp.Build();
  };
  const auto run_length = [&](const std::string& code) {
    BmpBuilder bmp;
    bmp.bits = 8;
    bmp.code = 1;
    bmp.palette = {0, 0xFF0000};
    bmp.pixels = code;
    return bmp.Build();
  };
  const std::string whole = changed([](BmpBuilder*) {}), none = "no";
  return {
      {"whole", whole, "2x2 3"},
      {"empty", "", none},
      {"mark alone", "BM", none},
      {"cut in the pixels", whole.substr(0, whole.size() - 3), none},
      {"no width", changed([](BmpBuilder* b) { b->width = 0; }), none},
      {"width of -1", changed([](BmpBuilder* b) { b->width = -1; }), none},
      {"lowest height", changed([](BmpBuilder* b) { b->height = INT32_MIN; }), none},
      {"sides whose product is small",
       changed([](BmpBuilder* b) { b->width = 65536, b->height = 65536; }), none},
      {"largest sides", changed([](BmpBuilder* b) { b->width = b->height = INT32_MAX; }), none},
      {"3 bits", changed([](BmpBuilder* b) { b->bits = 3; }), none},
      {"unknown code", changed([](BmpBuilder* b) { b->code = 9; }), none},
      {"header beyond the file", changed([](BmpBuilder* b) { b->header_bytes = ~0u; }), none},
      {"pixels beyond the file", changed([](BmpBuilder* b) { b->pixels_at = 0xFFFFFFFF; }), none},
      {"pixels in the header", changed([](BmpBuilder* b) { b->pixels_at = 0; }), "2x2 0"},
      {"more colours than there are", changed([](BmpBuilder* b) { b->colours_used = ~0u; }),
       "2x2 3"},
      {"a colour that is not there", changed([](BmpBuilder* b) { b->pixels[0] = '\xFF'; }),
       "2x2 2"},
      {"top row first", changed([](BmpBuilder* b) { b->height = -2; }), "2x2 3"},
      {"a run out of its row", run_length("\xFF\1" + std::string(1, '\0') + '\1'), "2x2 2"},
      {"rows without end", run_length(std::string(200, '\0') + "\2\1"), "2x2 0"},
      {"a move that leads out", run_length(std::string("\0\2\xFF\xFF\2\1", 6)), "2x2 0"},
      {"a move cut off", run_length(std::string("\0\2\1", 3)), none},
      {"single ones cut off", run_length(std::string("\0\xFF\1", 3)), none},
      {"nothing to unpack", run_length(""), none},
  };
}

// Both kinds of text; the answer: the first colour, colour 23, the current entry's, and the font.
Corpus SkinTexts() {
  const auto lines = [](int count, const std::string& line) {
    std::string text;
    for (int i = 0; i < count; ++i) text += line;
    return text;
  };
  const std::string none = "0 0 ffffff Arial";
  return {
      {"colours", "1,2,3,// x\r\n" + lines(23, "255,0,0\n"), "10203 ff0000 ffffff Arial"},
      {"empty", "", none},
      {"more lines than there are colours", lines(5000, "1,1,1\n"), "10101 10101 ffffff Arial"},
      {"numbers that are too large", "256,0,0\n999999999999,1,1\n-1,2,3\n1,2\n9,9,9",
       "90909 0 ffffff Arial"},
      {"style", "[Text]\nCurrent=#00ff00\nFONT= Tahoma \n", "0 0 ff00 Tahoma"},
      {"no digits", "Current=#00ff0g\nCurrent=#\nCurrent\n=#010203\n", none},
      {"a long font", "Font=" + std::string(32, 'f') + "\nFont=\n", none},
      {"a line of a megabyte", "Font=" + std::string(1000000, ' ') + "x\n", "0 0 ffffff x"},
      {"NULs", std::string("Current=#00\0000\n\0\0\n1,2,3\0", 23), "10203 0 ffffff Arial"},
      {"all bytes",
       [] {
         std::string s;
         for (int i = 0; i < 256; ++i) s += char(i);
         return s;
       }(),
       none},
  };
}

}  // namespace kelvo::hostile
