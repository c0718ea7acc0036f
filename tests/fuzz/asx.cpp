#include "tests/fuzz/playlist_input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  return kelvo::fuzz::CheckPlaylist(L"C:\\Music\\list.asx", data, size);
}
