#include "host/sound_sink.h"

#include <windows.h>

namespace velmora {
namespace {

constexpr wchar_t kSink[] = L"KELVO_AUDIO_SINK";
constexpr wchar_t kPace[] = L"KELVO_AUDIO_PACE";

}  // namespace

void SendSoundToFile(const std::wstring& path) {
  SetEnvironmentVariableW(kSink, path.c_str());
  SetEnvironmentVariableW(kPace, L"fast");
}

void SendSoundNowhere() {
  SetEnvironmentVariableW(kSink, L"silence");
}

}  // namespace velmora
