// How many graphics objects this process owns, for tests that look for leaks.
#pragma once

#include <windows.h>

#include <algorithm>
#include <vector>

namespace kelvo::test {

// Wine does not count them. There, a number that grows with every object that is not given back:
// handles carry an index, the lowest free ones are used first.
inline DWORD GdiObjects() {
  if (const DWORD counted = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) return counted;
  DWORD highest = 0;
  std::vector<HBRUSH> brushes(500);
  for (HBRUSH& brush : brushes) {
    brush = CreateSolidBrush(RGB(1, 2, 3));
    highest = std::max<DWORD>(highest, LOWORD(brush));
  }
  for (HBRUSH brush : brushes) DeleteObject(brush);
  return highest;
}

}  // namespace kelvo::test
