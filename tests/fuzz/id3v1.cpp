// Any file, read as its model reads it.
#include "catalog/media/id3v1.h"
#include "base/bytes/memory_source.h"
#include "catalog/media/entry_list.h"
#include "tests/fuzz/require.h"
#include "tests/oracles/id3v1_model.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using kelvo::fuzz::Require;
  kelvo::MemorySource source(data, size);
  kelvo::MediaEntry entry;
  const auto want =
      kelvo::oracle::ReadId3v1Model(std::string(reinterpret_cast<const char*>(data), size));
  Require(kelvo::ReadId3v1(source, &entry) == want.has_value());
  Require(static_cast<bool>(entry.tag) == want.has_value());
  if (!want) return 0;
  Require(std::string(entry.tag->title, sizeof(kelvo::TagBlock)) ==
          want->title + want->artist + want->album + want->genre);
  return 0;
}
