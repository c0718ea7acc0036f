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

// Tells a leak, which comes again with each round, from a cache, which grows once and then is used.
class LeakWatch {
 public:
  void AddRound(const Resources& now);
  // In how many rounds there was more than in all before.
  size_t gdi_objects() const { return grown_[0]; }
  size_t windows() const { return grown_[1]; }
  size_t handles() const { return grown_[2]; }

 private:
  size_t rounds_ = 0;
  size_t most_[3] = {};
  size_t grown_[3] = {};
};

}  // namespace velmora::test
