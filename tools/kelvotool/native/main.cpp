#include <stdio.h>
#include <string.h>
#include <unistd.h>

#include "base/memory/array.h"
#include "base/text/ansi.h"
#include "tools/kelvotool/console.h"

namespace kelvo::tool {

void PrintBytes(Stream stream, const char* bytes, size_t count) noexcept {
  fwrite(bytes, 1, count, stream == Stream::kOut ? stdout : stderr);
}

bool ErrorsAreWatched() noexcept {
  return isatty(STDERR_FILENO) != 0;
}

size_t EncodeUtf8(const wchar_t* text, char* bytes, size_t capacity) noexcept {
  return WideToUtf8(text, bytes, capacity);
}

}  // namespace kelvo::tool

int main(int argc, char** argv) {
  kelvo::Array<kelvo::Array<wchar_t>> texts;
  kelvo::Array<const wchar_t*> arguments;
  for (int i = 1; i < argc; ++i) {
    kelvo::Array<wchar_t> text;
    if (!text.Resize(strlen(argv[i]) + 1)) return 1;
    kelvo::Utf8ToUtf16(argv[i], text.data(), text.size());
    for (wchar_t& c : text) c = c == L'/' ? L'\\' : c;
    if (!arguments.Append(text.data()) || !texts.Append(std::move(text))) return 1;
  }
  const int result = kelvo::tool::Run(argc - 1, arguments.data());
  return fflush(stdout) == 0 && !ferror(stdout) ? result : 1;
}
