#include "host/input.h"

#include <kelvo/ogg_vorbis_input.h>
#include <kelvo/wma_input.h>

#include <vector>

#include "host/stream_format.h"

namespace velmora {
namespace {

constexpr uint32_t kMostHeaderBytes = 65536;  // of those before the stream's

bool HasExtension(const std::wstring& path, const wchar_t* extension) {
  const size_t point = path.find_last_of(L'.');
  return point != std::wstring::npos && lstrcmpiW(path.c_str() + point, extension) == 0;
}

bool IsWindowsMedia(const std::wstring& path) {
  return HasExtension(path, L".wma") || HasExtension(path, L".asf");
}

}  // namespace

bool Input::IsMedia(const std::wstring& path) {
  return HasExtension(path, L".ogg") || IsWindowsMedia(path);
}

Input::Input(const Library& library, const std::wstring& path) : is_wma_(IsWindowsMedia(path)) {
  if (is_wma_) {
    wma_ = library.Get<kelvo::WmaInput>(kelvo::kFeatureWma);
  } else {
    ogg_ = library.Get<kelvo::OggVorbisInput>(kelvo::kFeatureOggVorbis);
  }
}

const wchar_t* Input::Missing() const {
  if (is_wma_) return wma_ ? nullptr : L"Windows Media, which needs the player control";
  return ogg_ ? nullptr : L"Ogg Vorbis";
}

kelvo::InputPlugin& Input::plugin() const {
  return is_wma_ ? static_cast<kelvo::InputPlugin&>(*wma_) : *ogg_;
}

void Input::SetWindow(HWND window) const {
  is_wma_ ? wma_->SetOwnerWindow(window) : ogg_->SetNotifyWindow(window);
}

bool Input::GetInfo(const std::wstring& path, FileInfo* info) const {
  const auto query = [&](auto* plugin) {
    return plugin->GetFileInfo(path.c_str(), info->display_title, info->album, &info->format,
                               &info->length_ms, nullptr, info->artist, info->title) != 0;
  };
  if (!(is_wma_ ? query(wma_) : query(ogg_))) return false;
  CompleteFormat(path, &info->format);
  return true;
}

void Input::CompleteFormat(const std::wstring& path, kelvo::MediaInfo* format) const {
  MediaFile file;
  if (!is_wma_ || !file.Open(path.c_str(), 0)) return;
  std::vector<uint8_t> bytes(kMostHeaderBytes);
  uint32_t count = 0;
  StreamFormat stream;
  if (!file.Read(bytes.data(), kMostHeaderBytes, &count) ||
      !FindStreamFormat(bytes.data(), count, &stream)) {
    return;
  }
  if (format->sample_rate == 0) format->sample_rate = stream.sample_rate_hz / 1000;
  if (format->bit_rate == 0) format->bit_rate = stream.bit_rate_kbit;
  if (stream.channels == 2) format->stereo = 1;
}

std::wstring Input::SampleRate(const kelvo::MediaInfo& info) const {
  if (info.sample_rate == 0) return L"-";
  return std::to_wstring(info.sample_rate) + (is_wma_ ? L" kHz" : L" Hz");
}

}  // namespace velmora
