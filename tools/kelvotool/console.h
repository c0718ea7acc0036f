// Output in UTF-8. The arguments come as wide text with backslashes between folders.
#pragma once

#include <stddef.h>

namespace kelvo::tool {

enum class Stream { kOut, kError };

void Print(Stream stream, const char* ascii) noexcept;
void Print(Stream stream, const wchar_t* text) noexcept;
// Text in the system's code page.
void PrintAnsi(Stream stream, const char* text, size_t length) noexcept;
void PrintNumber(Stream stream, int number) noexcept;

// "kelvotool: PATH: WHAT" as an error.
void PrintError(const wchar_t* path, const char* what) noexcept;

// Tells someone who watches how far long work is: one line that is written over again, among the
// errors and on a terminal only, and gone when the work is done.
class Progress {
 public:
  explicit Progress(const char* what) noexcept : what_(what) {}
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();
  void Count() noexcept;

 private:
  const char* what_;
  int count_ = 0;
  bool shown_ = false;
};

// The platform's half: native/main.cpp, windows/main.cpp.
void PrintBytes(Stream stream, const char* bytes, size_t count) noexcept;
bool ErrorsAreWatched() noexcept;  // the errors go to a terminal
size_t EncodeUtf8(const wchar_t* text, char* bytes, size_t capacity) noexcept;

// The program. `words` does not hold the program's name. 0: done; 1: some input could not be used,
// or something was found; 2: wrong usage.
int Run(int count, const wchar_t* const* words) noexcept;

}  // namespace kelvo::tool
