// Any bytes, read as their model reads them; reading again gives the same.
#include <string.h>

#include "base/bytes/memory_source.h"
#include "input/wma/asf_header.h"
#include "tests/fuzz/require.h"
#include "tests/oracles/asf_model.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using kelvo::fuzz::Require;
  kelvo::MemorySource source(data, size);
  static kelvo::AsfInfo info, zero;
  memset(&info, 0xA5, sizeof(info));
  const std::string file(reinterpret_cast<const char*>(data), size);
  const kelvo::oracle::AsfModel want(file);
  Require(kelvo::ReadAsfInfo(source, L"\\m\\name.wma", &info) == want.is_asf);
  if (!want.is_asf) {
    Require(memcmp(&info, &zero, sizeof(info)) == 0);
    return 0;
  }
  const auto is = [](const wchar_t* got, const kelvo::oracle::Units& text) {
    return text == reinterpret_cast<const char16_t*>(got);
  };
  Require(is(info.title, want.title) && is(info.author, want.author) &&
          is(info.album, want.album) && is(info.format.genre, want.genre) &&
          is(info.display_title, want.DisplayTitle(u"name.wma")));
  Require(info.format.stereo == want.stereo && info.format.track == want.track);
  return 0;
}
