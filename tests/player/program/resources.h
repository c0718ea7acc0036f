// What a process holds: things that a leak makes more and more.
#pragma once

#include <windows.h>

#include <string>

namespace velmora::test {

struct Resources {
  size_t gdi_objects = 0;
  size_t windows = 0;
  size_t handles = 0;
  size_t private_bytes = 0;
};

// `process` needs PROCESS_QUERY_INFORMATION and PROCESS_VM_READ.
Resources CountResources(HANDLE process);

std::string Text(const Resources& resources);

}  // namespace velmora::test
