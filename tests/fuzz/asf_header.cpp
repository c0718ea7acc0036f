// Any bytes: the outputs are terminated, a refused file gives all zeros, and reading again gives
// the same.
#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include "base/bytes/memory_source.h"
#include "input/wma/asf_header.h"
#include "tests/fuzz/require.h"

namespace {

bool Terminated(const wchar_t* text, size_t capacity) {
  for (size_t i = 0; i < capacity; ++i) {
    if (text[i] == 0) return true;
  }
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using kelvo::AsfInfo;
  using kelvo::fuzz::Require;
  kelvo::MemorySource source(data, size);
  static AsfInfo info, again, zero;
  memset(&info, 0xA5, sizeof(info));
  memset(&again, 0x5A, sizeof(again));
  const bool taken = kelvo::ReadAsfInfo(source, L"\\m\\name.wma", &info);
  Require(taken == kelvo::ReadAsfInfo(source, L"\\m\\name.wma", &again));
  Require(Terminated(info.display_title, 260) && Terminated(info.title, 260) &&
          Terminated(info.author, 260) && Terminated(info.album, 260) &&
          Terminated(info.format.genre, 32));
  Require(info.format.stereo <= 1);
  Require(taken ? info.display_title[0] != 0 : memcmp(&info, &zero, sizeof(info)) == 0);
  Require(kelvo::CompareWide(info.display_title, again.display_title) == 0);
  Require(memcmp(&info.format, &again.format, sizeof(info.format)) == 0);
  return 0;
}
