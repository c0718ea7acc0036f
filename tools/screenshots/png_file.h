#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace screenshots {

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<uint32_t> pixels;  // 0x00RRGGBB, top row first
};

bool WritePng(const std::wstring& path, const Picture& picture);

}  // namespace screenshots
