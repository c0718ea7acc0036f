#include "pocketpc/coredll/sink_device.h"

#include <string.h>

namespace kelvo {
namespace {

// "RIFF" size "WAVE" "fmt " 16 format "data" size
constexpr uint32_t kHeaderBytes = 44;
constexpr uint32_t kRiffSizeAt = 4;
constexpr uint32_t kFormatAt = 20;
constexpr uint32_t kDataSizeAt = 40;

}  // namespace

bool WavFile::Create(const wchar_t* path, const uint8_t (&format)[16]) noexcept {
  uint8_t header[kHeaderBytes] = {'R', 'I', 'F', 'F', 36,  0,   0,   0, 'W',
                                  'A', 'V', 'E', 'f', 'm', 't', ' ', 16};
  memcpy(header + kFormatAt, format, sizeof(format));
  memcpy(header + kDataSizeAt - 4, "data", 4);
  data_bytes_ = 0;
  file_.Reset(CreateFileW(path, GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  return file_ && WriteAt(0, header, sizeof(header));
}

bool WavFile::Append(const void* data, uint32_t bytes) noexcept {
  if (bytes > 0xFFFFFFFFu - kHeaderBytes - data_bytes_) return false;
  if (!WriteAt(kHeaderBytes + data_bytes_, data, bytes)) return false;
  data_bytes_ += bytes;
  const uint32_t riff_bytes = kHeaderBytes - 8 + data_bytes_;
  return WriteAt(kRiffSizeAt, &riff_bytes, 4) && WriteAt(kDataSizeAt, &data_bytes_, 4);
}

bool WavFile::WriteAt(uint32_t offset, const void* data, uint32_t bytes) noexcept {
  LONG high = 0;  // offsets are unsigned
  if (SetFilePointer(file_.get(), static_cast<LONG>(offset), &high, FILE_BEGIN) ==
          INVALID_SET_FILE_POINTER &&
      GetLastError() != NO_ERROR) {
    return false;
  }
  DWORD written;
  return WriteFile(file_.get(), data, bytes, &written, nullptr) && written == bytes;
}

}  // namespace kelvo
