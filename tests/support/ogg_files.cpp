#include "tests/support/ogg_files.h"

#include <string.h>

#include "input/vorbis/decoder_heap.h"
#include "ivorbisfile.h"
#include "tests/support/memory_reader.h"

namespace kelvo::test {
namespace {

size_t Read(void* destination, size_t size, size_t count, void* source) {
  uint32_t got;
  static_cast<MemoryReader*>(source)->Read(destination, static_cast<uint32_t>(size * count), &got);
  return got / size;
}

int Seek(void* source, ogg_int64_t offset, int origin) {
  const uint32_t from = origin == SEEK_SET   ? kSeekStart
                        : origin == SEEK_CUR ? kSeekCurrent
                                             : kSeekEnd;
  return static_cast<MemoryReader*>(source)->Seek(offset, from) < 0 ? -1 : 0;
}

int Close(void*) {
  return 0;
}

long Tell(void* source) {
  return static_cast<long>(static_cast<MemoryReader*>(source)->Seek(0, kSeekCurrent));
}

// Runs `work` with a heap of its own for the decoder.
template <class Work>
void WithHeap(Work work) {
  DecoderHeap::AttachModule();
  {
    DecoderHeap heap;
    static_cast<void>(heap.Run(work));
  }
  DecoderHeap::DetachModule();
}

std::vector<std::vector<char>> Packets(const std::vector<char>& file, std::vector<int64_t>* ends) {
  std::vector<std::vector<char>> packets;
  WithHeap([&] {
    ogg_sync_state sync;
    ogg_sync_init(&sync);
    memcpy(ogg_sync_buffer(&sync, static_cast<long>(file.size())), file.data(), file.size());
    ogg_sync_wrote(&sync, static_cast<long>(file.size()));
    ogg_stream_state stream;
    ogg_page page;
    bool begun = false;
    while (ogg_sync_pageout(&sync, &page) == 1) {
      if (!begun) ogg_stream_init(&stream, ogg_page_serialno(&page));
      begun = true;
      ogg_stream_pagein(&stream, &page);
      ogg_packet packet;
      while (ogg_stream_packetout(&stream, &packet) == 1) {
        packets.emplace_back(packet.packet, packet.packet + packet.bytes);
        ends->push_back(packet.granulepos);
      }
    }
    if (begun) ogg_stream_clear(&stream);
    ogg_sync_clear(&sync);
  });
  return packets;
}

std::vector<char> Joined(const std::vector<std::vector<char>>& packets,
                         const std::vector<int64_t>& ends, int serial = 77) {
  std::vector<char> file;
  WithHeap([&] {
    ogg_stream_state stream;
    ogg_stream_init(&stream, serial);
    for (size_t i = 0; i < packets.size(); ++i) {
      ogg_packet packet = {};
      packet.packet = reinterpret_cast<unsigned char*>(const_cast<char*>(packets[i].data()));
      packet.bytes = static_cast<long>(packets[i].size());
      packet.b_o_s = i == 0;
      packet.e_o_s = i + 1 == packets.size();
      packet.granulepos = ends[i];
      packet.packetno = static_cast<ogg_int64_t>(i);
      ogg_stream_packetin(&stream, &packet);
      ogg_page page;
      // The headers fill pages of their own.
      const bool flush = i == 0 || i == 2 || ends[i] >= 0;
      while (flush ? ogg_stream_flush(&stream, &page) : ogg_stream_pageout(&stream, &page)) {
        file.insert(file.end(), page.header, page.header + page.header_len);
        file.insert(file.end(), page.body, page.body + page.body_len);
      }
    }
    ogg_stream_clear(&stream);
  });
  return file;
}

void Append32(std::vector<char>* out, size_t value) {
  for (int shift = 0; shift < 32; shift += 8) out->push_back(static_cast<char>(value >> shift));
}

}  // namespace

std::vector<std::vector<char>> DecodeIntoBuffers(const std::vector<char>& file, int64_t first_frame,
                                                 size_t buffer_bytes, size_t smallest_room) {
  std::vector<std::vector<char>> buffers;
  WithHeap([&] {
    MemoryReader source(file);
    OggVorbis_File decoder;
    if (ov_open_callbacks(&source, &decoder, nullptr, 0, {Read, Seek, Close, Tell}) < 0) return;
    if (first_frame < 0 || ov_pcm_seek(&decoder, first_frame) == 0) {
      std::vector<char> chunk(buffer_bytes);
      size_t room = 0;
      int link;
      long got;
      while ((got = ov_read(&decoder, chunk.data(),
                            static_cast<int>(room < smallest_room ? buffer_bytes : room), &link)) >
             0) {
        if (room < smallest_room) {
          buffers.emplace_back();
          room = buffer_bytes;
        }
        buffers.back().insert(buffers.back().end(), chunk.data(), chunk.data() + got);
        room -= static_cast<size_t>(got);
      }
    }
    ov_clear(&decoder);
  });
  return buffers;
}

std::vector<char> DecodeDirectly(const std::vector<char>& file, int64_t first_frame) {
  std::vector<char> pcm;
  for (const std::vector<char>& buffer : DecodeIntoBuffers(file, first_frame, 4096, 4096)) {
    pcm.insert(pcm.end(), buffer.begin(), buffer.end());
  }
  return pcm;
}

std::vector<char> WithComments(const std::vector<char>& file,
                               const std::vector<std::string>& comments, int serial) {
  std::vector<int64_t> ends;
  std::vector<std::vector<char>> packets = Packets(file, &ends);
  std::vector<char> header = {3, 'v', 'o', 'r', 'b', 'i', 's'};
  Append32(&header, 0);  // vendor
  Append32(&header, comments.size());
  for (const std::string& comment : comments) {
    Append32(&header, comment.size());
    header.insert(header.end(), comment.begin(), comment.end());
  }
  header.push_back(1);
  packets.at(1) = header;
  return Joined(packets, ends, serial);
}

std::vector<char> WithoutLength(const std::vector<char>& file) {
  std::vector<int64_t> ends;
  const std::vector<std::vector<char>> packets = Packets(file, &ends);
  for (int64_t& end : ends) end = end > 0 ? 0 : end;
  return Joined(packets, ends);
}

std::vector<char> WithoutSound(const std::vector<char>& file, int64_t frames) {
  std::vector<int64_t> ends;
  std::vector<std::vector<char>> packets = Packets(file, &ends);
  packets.resize(5);
  packets[4] = {1};  // no music
  ends = {0, 0, 0, 0, frames};
  return Joined(packets, ends);
}

std::vector<char> Repeated(const std::vector<char>& file, int times, int64_t claimed_frames) {
  std::vector<int64_t> ends;
  std::vector<std::vector<char>> packets = Packets(file, &ends);
  const size_t count = packets.size();
  const int64_t frames = ends.back();
  for (int i = 1; i < times; ++i) {
    for (size_t p = 3; p < count; ++p) {
      packets.push_back(packets[p]);
      ends.push_back(ends[p] < 0 ? -1 : ends[p] + frames * i);
    }
  }
  if (claimed_frames > 0) ends.back() = claimed_frames;
  return Joined(packets, ends);
}

std::vector<char> WithoutPage(const std::vector<char>& file, int page) {
  const std::string bytes(file.begin(), file.end());
  size_t at = 0;
  for (int i = 0; i < page; ++i) at = bytes.find("OggS", at + 4);
  const std::string rest = bytes.substr(bytes.find("OggS", at + 4));
  std::vector<char> result(file.begin(), file.begin() + static_cast<long>(at));
  result.insert(result.end(), rest.begin(), rest.end());
  return result;
}

}  // namespace kelvo::test
