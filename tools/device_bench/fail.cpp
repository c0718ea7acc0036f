#include "fail.h"

#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>

namespace bench {

void Fail(const char* format, ...) {
  fflush(stdout);
  fputs("device_bench: ", stderr);
  va_list arguments;
  va_start(arguments, format);
  vfprintf(stderr, format, arguments);
  va_end(arguments);
  fputc('\n', stderr);
  exit(1);
}

}  // namespace bench
