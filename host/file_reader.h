#pragma once

#include <kelvo/media_reader.h>
#include <windows.h>

namespace velmora {

// Reads a media file from disk for a plug-in.
class FileReader final : public kelvo::MediaReader {
 public:
  ~FileReader() { Close(); }

  int64_t Seek(int64_t offset, uint32_t origin) noexcept override;
  int32_t Read(void* destination, uint32_t bytes, uint32_t* bytes_read) noexcept override;
  int32_t Close() noexcept override;  // harmless when repeated
  int32_t Open(const wchar_t* path, uint32_t mode) noexcept override;
  int32_t Release(kelvo::HostWord, kelvo::HostWord) noexcept override { return 1; }

 private:
  HANDLE file_ = INVALID_HANDLE_VALUE;
};

}  // namespace velmora
