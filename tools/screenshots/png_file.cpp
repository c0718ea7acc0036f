#include "tools/screenshots/picture.h"

#include <windows.h>
#include <zlib.h>

namespace screenshots {
namespace {

void AppendBig32(std::string* bytes, uint32_t number) {
  for (int shift = 24; shift >= 0; shift -= 8) *bytes += static_cast<char>(number >> shift);
}

std::string Chunk(const char* kind, const std::string& data) {
  const std::string body = kind + data;
  std::string chunk;
  AppendBig32(&chunk, static_cast<uint32_t>(data.size()));
  chunk += body;
  const auto* bytes = reinterpret_cast<const Bytef*>(body.data());
  AppendBig32(&chunk, static_cast<uint32_t>(crc32(0, bytes, static_cast<uInt>(body.size()))));
  return chunk;
}

std::string Header(const Picture& picture) {
  std::string data;
  AppendBig32(&data, static_cast<uint32_t>(picture.width));
  AppendBig32(&data, static_cast<uint32_t>(picture.height));
  // 8 bits a channel, red green blue, the one compression, the one filter method, not interlaced.
  return data + std::string("\x08\x02\0\0\0", 5);
}

std::string Rows(const Picture& picture) {
  std::string rows;
  for (int y = 0; y < picture.height; ++y) {
    rows += '\0';  // no filter
    for (int x = 0; x < picture.width; ++x) {
      const uint32_t pixel = picture.pixels[static_cast<size_t>(y * picture.width + x)];
      for (int shift = 16; shift >= 0; shift -= 8) rows += static_cast<char>(pixel >> shift);
    }
  }
  return rows;
}

std::string Deflate(const std::string& bytes) {
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::string packed(size, '\0');
  const int result =
      compress2(reinterpret_cast<Bytef*>(&packed[0]), &size,
                reinterpret_cast<const Bytef*>(bytes.data()), static_cast<uLong>(bytes.size()), 9);
  packed.resize(result == Z_OK ? size : 0);
  return packed;
}

}  // namespace

bool WritePng(const std::wstring& path, const Picture& picture) {
  const std::string data = Deflate(Rows(picture));
  if (data.empty()) return false;
  const std::string file = "\x89PNG\r\n\x1a\n" + Chunk("IHDR", Header(picture)) +
                           Chunk("IDAT", data) + Chunk("IEND", "");
  const HANDLE handle =
      CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  if (handle == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  WriteFile(handle, file.data(), static_cast<DWORD>(file.size()), &written, nullptr);
  CloseHandle(handle);
  return written == file.size();
}

}  // namespace screenshots
