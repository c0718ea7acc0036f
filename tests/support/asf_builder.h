// Builds ASF headers byte by byte, well-formed unless a test asks otherwise.
#pragma once

#include <string>

#include "tests/support/wide_text.h"

namespace kelvo::test {

// "75B22630-668E-11CF-A6D9-00AA0062CE6C" in the byte order of files.
inline std::string Guid(const char* text) {
  std::string hex;
  for (; *text; ++text) {
    if (*text != '-') hex += *text;
  }
  static const int kOrder[16] = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
  std::string out;
  for (int at : kOrder) {
    out += static_cast<char>(std::stoi(hex.substr(static_cast<size_t>(at) * 2, 2), nullptr, 16));
  }
  return out;
}

class AsfBuilder {
 public:
  static constexpr uint64_t kRightSize = 0xFEDCBA9876543210;
  AsfBuilder& Object(const char* guid, const std::string& body, uint64_t size = kRightSize) {
    objects_ += Guid(guid) + Le(size == kRightSize ? body.size() + 24 : size, 8) + body;
    ++count_;
    return *this;
  }
  AsfBuilder& Description(const std::string& title, const std::string& author) {
    const std::string rest = Utf16("(c)") + Utf16("words");
    return Object(kDescription, Le(title.size() * 2, 2) + Le(author.size() * 2, 2) + Le(6, 2) +
                                    Le(10, 2) + Le(0, 2) + Utf16(title) + Utf16(author) + rest);
  }
  // `attributes` joined from the functions below.
  AsfBuilder& Extended(int count, const std::string& attributes) {
    return Object(kExtended, Le(static_cast<uint64_t>(count), 2) + attributes);
  }
  AsfBuilder& Codecs(uint32_t count, const std::string& entries) {
    return Object(kCodecs, std::string(16, 'r') + Le(count, 4) + entries);
  }
  AsfBuilder& Codec(const std::string& description) {
    return Codecs(1, CodecEntry(2, description));
  }
  AsfBuilder& Bitrates(uint16_t count, const std::string& records) {
    return Object(kBitrates, Le(count, 2) + records);
  }
  AsfBuilder& FileProperties(uint64_t play_100ns, uint64_t preroll_ms) {
    return Object(kProperties, std::string(40, 'p') + Le(play_100ns, 8) + std::string(8, 's') +
                                   Le(preroll_ms, 8) + std::string(16, 'x'));
  }
  AsfBuilder& Count(uint32_t count) {
    claimed_ = count;
    has_claim_ = true;
    return *this;
  }
  std::string Build() const {
    return Guid("75B22630-668E-11CF-A6D9-00AA0062CE6C") + Le(objects_.size() + 30, 8) +
           Le(has_claim_ ? claimed_ : count_, 4) + "\1\2" + objects_;
  }

  static std::string Attribute(const std::string& name, uint16_t type, const std::string& value) {
    return Le(name.size() * 2 + 2, 2) + Utf16(name + '\0') + Le(type, 2) + Le(value.size(), 2) +
           value;
  }
  static std::string Text(const std::string& name, const std::string& value) {
    return Attribute(name, 0, Utf16(value + '\0'));
  }
  static std::string Number(const std::string& name, uint32_t value) {
    return Attribute(name, 3, Le(value, 4));
  }
  static std::string CodecEntry(uint16_t type, const std::string& description) {
    return Le(type, 2) + Le(6, 2) + Utf16("Codec" + std::string(1, '\0')) +
           Le(description.size(), 2) + Utf16(description) + Le(2, 2) + "ii";
  }
  static std::string Bitrate(uint32_t bits_per_second) { return "ff" + Le(bits_per_second, 4); }

  static constexpr const char* kDescription = "75B22633-668E-11CF-A6D9-00AA0062CE6C";
  static constexpr const char* kExtended = "D2D0A440-E307-11D2-97F0-00A0C95EA850";
  static constexpr const char* kBitrates = "7BF875CE-468D-11D1-8D82-006097C9A2B2";
  static constexpr const char* kCodecs = "86D15240-311D-11D0-A3A4-00A0C90348F6";
  static constexpr const char* kProperties = "8CABDCA1-A947-11CF-8EE4-00C00C205365";

 private:
  std::string objects_;
  uint32_t count_ = 0;
  uint32_t claimed_ = 0;
  bool has_claim_ = false;
};

}  // namespace kelvo::test
