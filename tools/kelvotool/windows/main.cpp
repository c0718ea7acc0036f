#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <stdio.h>

#include "tools/kelvotool/console.h"

namespace kelvo::tool {

void PrintBytes(Stream stream, const char* bytes, size_t count) noexcept {
  fwrite(bytes, 1, count, stream == Stream::kOut ? stdout : stderr);
}

bool ErrorsAreWatched() noexcept {
  return _isatty(_fileno(stderr)) != 0;
}

size_t EncodeUtf8(const wchar_t* text, char* bytes, size_t capacity) noexcept {
  const int count = WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes, static_cast<int>(capacity),
                                        nullptr, nullptr);
  return count > 0 ? static_cast<size_t>(count) - 1 : 0;
}

}  // namespace kelvo::tool

extern "C" int wmain(int argc, wchar_t** argv) {
  SetConsoleOutputCP(CP_UTF8);
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  for (int i = 1; i < argc; ++i) {
    for (wchar_t* c = argv[i]; *c != 0; ++c) *c = *c == L'/' ? L'\\' : *c;
  }
  const int result = kelvo::tool::Run(argc - 1, argv + 1);
  return fflush(stdout) == 0 && !ferror(stdout) ? result : 1;
}
