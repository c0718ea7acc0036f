// Where sound goes instead of the sound device: read by the desktop's stand-in for the device's
// sound functions at each opening, so it holds for plug-ins with an output of their own too.
#pragma once

#include <string>

namespace velmora {

// Into a WAV file, as fast as it comes.
void SendSoundToFile(const std::wstring& path);
// It is not heard, but takes its time.
void SendSoundNowhere();

}  // namespace velmora
