#include "host/input.h"

namespace velmora {

static_assert(FILE_BEGIN == kelvo::kSeekStart && FILE_CURRENT == kelvo::kSeekCurrent &&
              FILE_END == kelvo::kSeekEnd);

int64_t MediaFile::Seek(int64_t offset, uint32_t origin) noexcept {
  LARGE_INTEGER distance;
  LARGE_INTEGER position;
  distance.QuadPart = offset;
  if (!SetFilePointerEx(file_, distance, &position, origin)) return kelvo::kSeekFailed;
  return position.QuadPart;
}

int32_t MediaFile::Read(void* destination, uint32_t bytes, uint32_t* bytes_read) noexcept {
  DWORD count = 0;
  const BOOL read = ReadFile(file_, destination, bytes, &count, nullptr);
  *bytes_read = count;
  return read;
}

int32_t MediaFile::Close() noexcept {
  if (file_ != INVALID_HANDLE_VALUE) CloseHandle(file_);
  file_ = INVALID_HANDLE_VALUE;
  return 1;
}

int32_t MediaFile::Open(const wchar_t* path, uint32_t) noexcept {
  Close();
  file_ = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                      FILE_ATTRIBUTE_NORMAL, nullptr);
  return file_ != INVALID_HANDLE_VALUE;
}

}  // namespace velmora
