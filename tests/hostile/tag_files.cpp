#include "tests/hostile/corpus.h"
#include "tests/support/asf_builder.h"
#include "tests/support/id3v1_tag.h"

namespace kelvo::hostile {

using test::AsfBuilder;
using test::Le;
using test::Utf16;

Corpus AsfFiles() {
  using B = AsfBuilder;
  const std::string whole =
      B().FileProperties(30000000, 1000)
          .Description("T", "A")
          .Extended(2, B::Text("WM/AlbumTitle", "L") + B::Number("WM/Track", 4))
          .Codec("64 kbps, 44 kHz, stereo")
          .Build();
  const auto sized = [](uint64_t size) {
    return B()
        .Description("T", "A")
        .Object("00112233-4455-6677-8899-AABBCCDDEEFF", "body", size)
        .FileProperties(10000, 0)
        .Build();
  };
  const std::string long_text(32767, 'l');
  const std::string only_t = "T|A|||0/0/0#100000 0 ms";
  return {
      {"whole", whole, "T|A|L||44/64/1#5 2000 ms"},
      {"empty", "", "no"},
      {"cut in the header", whole.substr(0, 29), "no"},
      {"another mark", "1" + whole.substr(1), "no"},
      {"header alone", whole.substr(0, 30), "||||0/0/0#100000 0 ms"},
      {"cut in the first object", whole.substr(0, 60), "||||0/0/0#100000 0 ms"},
      {"2^32 - 1 objects", B().Description("T", "A").Count(~0u).Build(), only_t},
      {"no object counted", B().Description("T", "A").Count(0).Build(), "||||0/0/0#100000 0 ms"},
      {"an object of size 0", sized(0), only_t},
      {"an object of size 23", sized(23), only_t},
      {"an object beyond the file", sized(1000000), only_t},
      {"an object of 2^64 - 1", sized(~uint64_t{0}), only_t},
      {"an object of 2^63 + 28", sized((uint64_t{1} << 63) + 28), only_t},
      {"texts beyond the file",
       B().Object(B::kDescription, Le(~0u, 2) + Le(~0u, 2) + Le(0, 6) + "xx").Build(),
       "||||0/0/0#100000 0 ms"},
      {"texts of an odd length",
       B().Object(B::kDescription, Le(3, 2) + Le(1, 2) + Le(0, 6) + std::string("T\0xA", 4))
           .Build(),
       "T||||0/0/0#100000 0 ms"},
      {"long texts", B().Description(long_text, long_text).Build(),
       std::string(259, 'l') + "|" + std::string(259, 'l') + "|||0/0/0#100000 0 ms"},
      {"more attributes than there are",
       B().Object(B::kExtended, Le(0xFFFF, 2) + B::Text("WM/AlbumTitle", "L")).Build(),
       "||L||0/0/0#100000 0 ms"},
      {"a name beyond the file", B().Object(B::kExtended, Le(1, 2) + Le(0xFFFF, 2) + "x").Build(),
       "||||0/0/0#100000 0 ms"},
      {"a long genre", B().Extended(1, B::Text("WM/Genre", std::string(4000, 'g'))).Build(),
       "|||" + std::string(31, 'g') + "|0/0/0#100000 0 ms"},
      {"numbers of every type",
       B().Extended(2, B::Attribute("WM/TrackNumber", 5, Le(9, 2)) +
                           B::Attribute("WM/Track", 4, Le(~uint64_t{0}, 8)))
           .Build(),
       "||||0/0/0#9 0 ms"},
      {"codecs without end", B().Codecs(~0u, B::CodecEntry(2, "64 kbps, 44 kHz")).Build(),
       "||||44/64/0#100000 0 ms"},
      {"a codec's words beyond the file",
       B().Codecs(1, Le(2, 2) + Le(0, 2) + Le(0xFFFF, 2) + "x").Build(), "||||0/0/0#100000 0 ms"},
      {"a second codec list cut off",
       B().Codec("64 kbps, 44 kHz").Object(B::kCodecs, "cut").Build(), "||||44/64/0#100000 0 ms"},
      {"no bit rates", B().Bitrates(0, "").Build(), "||||0/0/0#100000 0 ms"},
      {"bit rates beyond 32 bits", B().Bitrates(2, B::Bitrate(~0u) + B::Bitrate(~0u)).Build(),
       "||||0/4294967/0#100000 0 ms"},
      {"bit rates that are missing", B().Bitrates(0xFFFF, B::Bitrate(1000)).Build(),
       "||||0/0/0#100000 0 ms"},
      {"preroll beyond the length", B().FileProperties(0, 1).Build(),
       "||||0/0/0#100000 3133608138 ms"},
  };
}

Corpus TaggedFiles() {
  using test::Id3v1Tag;
  const std::string thirty(30, 'f'), tag = Id3v1Tag("T", "A", "L", 17, ' ');
  return {
      {"whole", "sound" + tag, "T|A|L|Rock"},
      {"empty", "", "none"},
      {"a byte too short", tag.substr(1), "none"},
      {"cut at its end", tag.substr(0, 127), "none"},
      {"something behind it", tag + ".", "none"},
      {"a small letter", "TAg" + tag.substr(3), "none"},
      {"full fields", Id3v1Tag(thirty, thirty, thirty, 147),
       thirty + "|" + thirty + "|" + thirty + "|Synthpop"},
      {"blanks alone", Id3v1Tag("", "", "", 148, ' '), "|||"},
      {"a genre that has no name", Id3v1Tag("T", "", "", 149), "T|||"},
      {"the last genre number", Id3v1Tag("T", "", "", 255), "T|||"},
      {"a NUL inside", Id3v1Tag(std::string("a\0b", 3), "", "", 0), "a|||Blues"},
      {"line ends", Id3v1Tag("a\r\nb", "", "", 0), "a\r\nb|||Blues"},
      {"tag upon tag", tag + Id3v1Tag("last", "", "", 4), "last|||Disco"},
  };
}

}  // namespace kelvo::hostile
