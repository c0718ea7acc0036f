// Zip archives, honest and lying.
#pragma once

#include <zlib.h>

#include <string>

#include "tests/support/wide_text.h"

namespace kelvo::test {

// What a member's headers say; a default means the truth.
struct ZipMember {
  std::string name;
  std::string content;
  bool deflated = true;
  uint16_t flags = 0;
  int method = -1;
  int64_t crc = -1;
  int64_t size = -1;            // in both headers
  int64_t packed_size = -1;     // in both headers
  std::string local_name = {};  // in front of the data
  std::string extra = {};       // in the directory only
  bool streamed = false;        // sizes and checksum follow the data
};

class ZipBuilder {
 public:
  static std::string Deflate(const std::string& content) {
    z_stream stream = {};
    deflateInit2(&stream, 9, Z_DEFLATED, -MAX_WBITS, 9, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
    stream.avail_in = static_cast<uInt>(content.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
  }

  ZipBuilder& Add(const ZipMember& m) {
    const std::string packed = m.deflated ? Deflate(m.content) : m.content;
    const uLong crc = crc32(0, reinterpret_cast<const Bytef*>(m.content.data()),
                            static_cast<uInt>(m.content.size()));
    const int method = m.method >= 0 ? m.method : m.deflated ? 8 : 0;
    const std::string kind = Le(20, 2) + Le(m.flags | (m.streamed ? 8u : 0u), 2) +
                             Le(static_cast<uint64_t>(method), 2) + Le(0, 4);
    const std::string sizes =
        Le(m.crc >= 0 ? static_cast<uint64_t>(m.crc) : crc, 4) +
        Le(m.packed_size >= 0 ? static_cast<uint64_t>(m.packed_size) : packed.size(), 4) +
        Le(m.size >= 0 ? static_cast<uint64_t>(m.size) : m.content.size(), 4);
    const std::string& local = m.local_name.empty() ? m.name : m.local_name;
    directory_ += Le(0x02014B50, 4) + Le(20, 2) + kind + sizes + Le(m.name.size(), 2) +
                  Le(m.extra.size(), 2) + Le(0, 2) + Le(0, 8) + Le(data_.size(), 4) + m.name +
                  m.extra;
    data_ += Le(0x04034B50, 4) + kind + (m.streamed ? std::string(12, '\0') : sizes) +
             Le(local.size(), 2) + Le(0, 2) + local + packed;
    if (m.streamed) data_ += Le(0x08074B50, 4) + sizes;
    ++members_;
    return *this;
  }
  // Counts the last member so many times more.
  ZipBuilder& Repeat(int times) {
    const std::string entry = directory_.substr(directory_.rfind("PK\x01\x02"));
    directory_.reserve(directory_.size() + entry.size() * static_cast<size_t>(times));
    for (int i = 0; i < times; ++i) directory_ += entry;
    members_ += static_cast<uint64_t>(times);
    return *this;
  }
  std::string Bytes(const std::string& comment = "", int64_t claimed_members = -1) const {
    const uint64_t members =
        claimed_members >= 0 ? static_cast<uint64_t>(claimed_members) : members_;
    return data_ + directory_ + Le(0x06054B50, 4) + Le(0, 4) + Le(members, 2) + Le(members, 2) +
           Le(directory_.size(), 4) + Le(data_.size(), 4) + Le(comment.size(), 2) + comment;
  }

  // The same with the 64-bit form of the directory's end, which counts `members`.
  std::string Bytes64(uint64_t members, uint64_t directory_offset) const {
    const std::string end64 = Le(0x06064B50, 4) + Le(44, 8) + Le(45, 2) + Le(45, 2) + Le(0, 8) +
                              Le(members, 8) + Le(members, 8) + Le(directory_.size(), 8) +
                              Le(directory_offset, 8);
    const std::string locator =
        Le(0x07064B50, 4) + Le(0, 4) + Le(data_.size() + directory_.size(), 8) + Le(1, 4);
    return data_ + directory_ + end64 + locator + Le(0x06054B50, 4) + Le(0, 4) + Le(0xFFFF, 2) +
           Le(0xFFFF, 2) + Le(0xFFFFFFFF, 4) + Le(0xFFFFFFFF, 4) + Le(0, 2);
  }
  std::string Bytes64() const { return Bytes64(members_, data_.size()); }

 private:
  std::string data_;
  std::string directory_;
  uint64_t members_ = 0;
};

}  // namespace kelvo::test
