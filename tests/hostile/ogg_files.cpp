#include <algorithm>

#include "tests/hostile/corpus.h"
#include "tests/support/wide_text.h"

namespace kelvo::hostile {
namespace {

using test::Le;

uint32_t PageChecksum(const std::string& page) {
  uint32_t sum = 0;
  for (const char c : page) {
    sum ^= static_cast<uint32_t>(static_cast<uint8_t>(c)) << 24;
    for (int bit = 0; bit < 8; ++bit) sum = sum << 1 ^ (sum & 0x80000000 ? 0x04C11DB7 : 0);
  }
  return sum;
}

struct Page {
  uint8_t flags;  // 1 continued, 2 first, 4 last
  uint64_t position;
  uint32_t serial;
  std::string lacing, body;

  std::string Bytes(uint32_t number) const {
    std::string page = "OggS" + Le(0, 1) + Le(flags, 1) + Le(position, 8) + Le(serial, 4) +
                       Le(number, 4) + Le(0, 4) + Le(lacing.size(), 1) + lacing + body;
    return page.replace(22, 4, Le(PageChecksum(page), 4));
  }
};

struct Song {
  std::vector<Page> pages;  // a packet each, or a part of one

  void Add(const std::string& packet, uint64_t position, uint8_t flags) {
    std::string lacing(packet.size() / 255, '\xFF');
    lacing += static_cast<char>(packet.size() % 255);
    for (size_t at = 0; at < lacing.size(); at += 255) {
      const bool ends = at + 255 >= lacing.size();
      const auto part = static_cast<uint8_t>(at > 0 ? flags | 1 : flags);
      pages.push_back({part, ends ? position : ~uint64_t{0}, 7, lacing.substr(at, 255),
                       packet.substr(at * 255, 255 * 255)});
    }
  }
  std::string Bytes() const {
    std::string file;
    for (size_t i = 0; i < pages.size(); ++i) file += pages[i].Bytes(static_cast<uint32_t>(i));
    return file;
  }
};

struct Packet {
  std::string bytes;
  uint64_t position;
};

std::vector<Packet> PacketsOf(const std::string& file) {
  std::vector<Packet> packets;
  std::string packet;
  for (size_t at = 0; at + 27 <= file.size();) {
    const auto byte = [&](size_t i) { return static_cast<uint8_t>(file[at + i]); };
    const size_t segments = byte(26);
    uint64_t position = 0;
    for (size_t i = 0; i < 8; ++i) position |= uint64_t{byte(6 + i)} << 8 * i;
    size_t body = at + 27 + segments;
    for (size_t i = 0; i < segments; ++i) {
      packet += file.substr(body, byte(27 + i));
      body += byte(27 + i);
      if (byte(27 + i) == 255) continue;
      packets.push_back({packet, ~uint64_t{0}});
      packet.clear();
    }
    if (!packets.empty()) packets.back().position = position;
    at = body;
  }
  return packets;
}

std::string Comments(const std::vector<std::string>& comments) {
  std::string packet = "\x03vorbis" + Le(0, 4) + Le(comments.size(), 4);
  for (const std::string& comment : comments) packet += Le(comment.size(), 4) + comment;
  return packet + '\x01';
}

}  // namespace

Corpus OggFiles(const std::string& file) {
  std::vector<Packet> packets = PacketsOf(file);
  // Its blocks are of one length.
  const uint64_t end = packets.back().position;
  for (size_t i = 0; i < packets.size(); ++i) {
    packets[i].position = i < 3 ? 0 : std::min(uint64_t{256} * (i - 3), end);
  }
  packets.at(1).bytes = Comments({"ARTIST=A", "title=T", "TrackNumber=3x"});
  const auto song = [&](void (*change)(std::vector<Packet>*) = nullptr) {
    std::vector<Packet> changed = packets;
    if (change) change(&changed);
    Song made;
    for (size_t i = 0; i < changed.size(); ++i) {
      const int flags = i == 0 ? 2 : i + 1 == changed.size() ? 4 : 0;
      made.Add(changed[i].bytes, changed[i].position, static_cast<uint8_t>(flags));
    }
    return made;
  };
  const auto with_pages = [&](void (*change)(std::vector<Page>*)) {
    Song made = song();
    change(&made.pages);
    return made.Bytes();
  };
  const auto with_header = [&](size_t packet, size_t at, const std::string& bytes) {
    std::vector<Packet> changed = packets;
    changed[packet].bytes.replace(at, bytes.size(), bytes);
    changed.swap(packets);
    const std::string made = song().Bytes();
    changed.swap(packets);
    return made;
  };
  const auto with_comments = [&](const std::string& packet) {
    std::vector<Packet> changed = packets;
    changed[1].bytes = packet;
    changed.swap(packets);
    const std::string made = song().Bytes();
    changed.swap(packets);
    return made;
  };
  using Pages = std::vector<Page>;
  const std::string whole = song().Bytes();
  const std::string second = with_pages([](Pages* p) {
    for (Page& page : *p) page.serial = 8;
  });
  std::string bad_first = whole, bad_sound = whole;
  bad_first[40] ^= 1;
  bad_sound[whole.size() - 400] ^= 1;
  const std::string all = "A|T|3", none = "no";
  return {
      {"whole", whole, all + " 16000"},
      {"empty", "", none},
      {"one byte", "O", none},
      {"letters", std::string(5000, 'O'), none},
      {"page marks",
       [] {
         std::string s;
         while (s.size() < 70000) s += "OggS";
         return s;
       }(),
       none},
      {"bad checksum first", bad_first, none},
      {"bad checksum in the sound", bad_sound, all + " 14080"},
      {"another codec", with_header(0, 0, "OpusHead"), none},
      {"first page alone", whole.substr(0, 58), none},
      {"no set-up", with_pages([](Pages* p) { p->resize(2); }), none},
      {"no sound", with_pages([](Pages* p) { p->resize(3); }), all + " shut"},
      {"cut in the sound", whole.substr(0, whole.size() - 400), all + " 14080"},
      {"cut in the set-up", whole.substr(0, 600), none},
      {"a page missing", with_pages([](Pages* p) { p->erase(p->begin() + 8); }), all + " 15744"},
      {"a page twice", with_pages([](Pages* p) { p->insert(p->begin() + 8, Page((*p)[8])); }),
       all + " 16256"},
      {"pages swapped", with_pages([](Pages* p) { std::swap((*p)[8], (*p)[9]); }), all + " 16000"},
      {"no last mark", with_pages([](Pages* p) { p->back().flags = 0; }), all + " 16128"},
      {"first mark everywhere", with_pages([](Pages* p) {
         for (Page& page : *p) page.flags |= 2;
       }),
       all + " 16000"},
      {"ends at 0", with_pages([](Pages* p) {
         for (Page& page : *p) page.position = 0;
       }),
       all + " shut"},
      {"ends at 2^32", with_pages([](Pages* p) { p->back().position = uint64_t{1} << 32; }),
       all + " shut"},
      {"ends beyond all", with_pages([](Pages* p) { p->back().position = ~uint64_t{0} >> 1; }),
       all + " 16128"},
      {"ends before it begins", with_pages([](Pages* p) { p->back().position = uint64_t(-9); }),
       all + " shut"},
      {"another stream between", with_pages([](Pages* p) {
         p->insert(p->begin() + 6, {0, 5, 99, "\x04", "junk"});
       }),
       all + " 512"},
      {"pages of nothing", with_pages([](Pages* p) {
         p->insert(p->begin() + 6, 300, {0, ~uint64_t{0}, 7, "", ""});
       }),
       all + " 16000"},
      {"a packet that never ends", with_pages([](Pages* p) {
         p->back().lacing += '\xFF';
         p->back().body += std::string(255, 'x');
       }),
       all + " 16128"},
      {"lacing beyond the file", with_pages([](Pages* p) { p->back().lacing += "\xFF\xFF"; }),
       all + " 15872"},
      {"the sound is noise", with_pages([](Pages* p) {
         for (size_t i = 5; i < p->size(); ++i) (*p)[i].body.assign((*p)[i].body.size(), '\x5A');
       }),
       all + " 16000"},
      {"two links", whole + second, all + " 32000"},
      {"a link that is cut", whole + second.substr(0, 600), none},
      {"junk behind the end", whole + std::string(70000, 'j'), all + " 16000"},
      {"version 1", with_header(0, 7, Le(1, 4)), none},
      {"no channels", with_header(0, 11, Le(0, 1)), none},
      {"255 channels", with_header(0, 11, Le(255, 1)), all + " 4080000"},
      {"no rate", with_header(0, 12, Le(0, 4)), none},
      {"block sizes exchanged", with_header(0, 28, "\x6B"), none},
      {"block sizes of 2^15", with_header(0, 28, "\xFF"), none},
      {"no framing bit", with_header(0, 29, Le(0, 1)), none},
      {"vendor beyond the packet", with_header(1, 7, Le(~0u, 4)), none},
      {"more comments than there are", with_header(1, 11, Le(~0u, 4)), none},
      {"a comment beyond the packet", with_header(1, 15, Le(0x7FFFFFFF, 4)), none},
      {"broken characters",
       with_comments(Comments({"ARTIST=\xC3", "TITLE=a\x80zz", "TRACKNUMBER=-2", "=", "TITLE"})),
       "|a|-2 16000"},
      {"10,000 comments", with_comments(Comments(std::vector<std::string>(10000, "TITLE=x"))),
       "|x|0 16000"},
      {"a comment of 100,000", with_comments(Comments({"TITLE=" + std::string(100000, 'l')})),
       "|" + std::string(63, 'l') + "|0 16000"},
      {"set-up of noise", with_header(2, 7, std::string(60, '\xA5')), none},
      {"set-up of books", with_header(2, 7, "\xFF"), none},
  };
}

}  // namespace kelvo::hostile
