// The plug-in for a file, by the file's extension, and what it reads the file with.
#pragma once

#include <kelvo/input_plugin.h>
#include <kelvo/media_reader.h>
#include <windows.h>

#include <string>

#include "host/library.h"

namespace kelvo {
class OggVorbisInput;
class WmaInput;
}  // namespace kelvo

namespace velmora {

struct FileInfo {
  wchar_t display_title[kelvo::kMaxText] = L"";
  wchar_t title[kelvo::kMaxText] = L"";
  wchar_t artist[kelvo::kMaxText] = L"";
  wchar_t album[kelvo::kMaxText] = L"";
  kelvo::MediaInfo format = {};
  uint32_t length_ms = 0;
};

class Input {
 public:
  Input(const Library& library, const std::wstring& path);

  // Whether a file has an extension that a plug-in is for.
  static bool IsMedia(const std::wstring& path);

  // What the library cannot do with the file, or null.
  const wchar_t* Missing() const;
  // The rest needs a plug-in.
  kelvo::InputPlugin& plugin() const;
  // Plays through the sound device by itself, not through an AudioOutput.
  bool has_own_output() const { return is_wma_; }
  // The plug-in of that kind, or null for another.
  kelvo::WmaInput* wma() const { return wma_; }
  // Who is told of the end of playback; null for nobody.
  void SetWindow(HWND window) const;
  bool GetInfo(const std::wstring& path, FileInfo* info) const;
  // Adds what the plug-in does not report of a file's format.
  void CompleteFormat(const std::wstring& path, kelvo::MediaInfo* format) const;
  uint32_t SampleRateHz(const kelvo::MediaInfo& info) const {
    return info.sample_rate * (is_wma_ ? 1000 : 1);
  }
  // "44 kHz", "44100 Hz", "-"
  std::wstring SampleRate(const kelvo::MediaInfo& info) const;

 private:
  bool is_wma_;
  kelvo::OggVorbisInput* ogg_ = nullptr;
  kelvo::WmaInput* wma_ = nullptr;
};

// Reads a media file from disk for a plug-in.
class MediaFile final : public kelvo::MediaReader {
 public:
  ~MediaFile() { Close(); }

  int64_t Seek(int64_t offset, uint32_t origin) noexcept override;
  int32_t Read(void* destination, uint32_t bytes, uint32_t* bytes_read) noexcept override;
  int32_t Close() noexcept override;  // harmless when repeated
  int32_t Open(const wchar_t* path, uint32_t mode) noexcept override;
  int32_t Release(kelvo::HostWord, kelvo::HostWord) noexcept override { return 1; }

 private:
  HANDLE file_ = INVALID_HANDLE_VALUE;
};

}  // namespace velmora
