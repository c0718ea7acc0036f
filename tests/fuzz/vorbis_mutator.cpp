// Mutates Ogg files page by page and mends the checksums: without that nearly every mutation ends
// at the first page that it touches.
#include <ogg/ogg.h>
#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include <algorithm>
#include <random>
#include <vector>

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t max_size);

namespace {

struct Page {
  size_t at;
  size_t head;
  size_t body;
  size_t end() const { return at + head + body; }
};

std::vector<Page> FindPages(const uint8_t* data, size_t size) {
  std::vector<Page> pages;
  for (size_t at = 0; at + 27 <= size;) {
    Page page = {at, 27u + data[at + 26], 0};
    if (memcmp(data + at, "OggS", 4) == 0 && at + page.head <= size) {
      for (size_t i = 27; i < page.head; ++i) page.body += data[at + i];
      if (page.end() <= size) {
        pages.push_back(page);
        at = page.end();
        continue;
      }
    }
    ++at;
  }
  return pages;
}

void MendChecksums(uint8_t* data, size_t size) {
  for (const Page& page : FindPages(data, size)) {
    uint8_t* head = data + page.at;
    ogg_page fields = {head, static_cast<long>(page.head), head + page.head,
                       static_cast<long>(page.body)};
    ogg_page_checksum_set(&fields);
  }
}

}  // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t max_size,
                                          unsigned int seed) {
  std::minstd_rand random(seed);
  const std::vector<Page> pages = FindPages(data, size);
  const Page page = pages.empty() ? Page{0, 0, 0} : pages[random() % pages.size()];
  switch (pages.empty() ? 9 : random() % 10) {
    case 0:
    case 1:
    case 2:
    case 3:  // within a body
      if (page.body > 0) LLVMFuzzerMutate(data + page.at + page.head, page.body, page.body);
      break;
    case 4:  // flags, position, serial number, page number
      LLVMFuzzerMutate(data + page.at + 5, 17, 17);
      break;
    case 5: {  // a page, or all from it on, once more elsewhere
      const size_t bytes = (random() % 2 == 0 ? page.end() : size) - page.at;
      if (bytes > max_size - std::min(size, max_size)) break;
      const std::vector<uint8_t> copy(data + page.at, data + page.at + bytes);
      const size_t to = random() % 2 == 0 ? size : pages[random() % pages.size()].at;
      memmove(data + to + bytes, data + to, size - to);
      std::copy(copy.begin(), copy.end(), data + to);
      size += bytes;
      break;
    }
    case 6:  // another serial number from here to the end: a link of its own
      for (const Page& later : pages) {
        if (later.at >= page.at) data[later.at + 14] = static_cast<uint8_t>(seed);
      }
      break;
    case 7:  // a page less
      memmove(data + page.at, data + page.end(), size - page.end());
      size -= page.head + page.body;
      break;
    default:
      size = LLVMFuzzerMutate(data, size, max_size);
  }
  MendChecksums(data, size);
  return size;
}
