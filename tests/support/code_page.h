#pragma once

#include "base/text/ansi.h"

namespace kelvo::test {

// Text is converted with this code page during the object's life.
class CodePage {
 public:
  explicit CodePage(unsigned number) { UseAnsiCodePage(number); }
  ~CodePage() { UseAnsiCodePage(0); }
  CodePage(const CodePage&) = delete;
  CodePage& operator=(const CodePage&) = delete;
};

}  // namespace kelvo::test
