#pragma once

#include <windows.h>

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

// These parts of the screen, as soon as they stand still; between them there is plain grey.
Picture Photograph(const std::vector<RECT>& parts);

}  // namespace screenshots
