#pragma once

#include <string>

namespace velmora {

std::string ToUtf8(const std::wstring& text);
std::wstring FromUtf8(const std::string& text);

}  // namespace velmora
