/* A whole host in C: plays an Ogg Vorbis file, then shows the bookmarks.   main FILE.ogg */
#include <kelvo/kelvo.h>
#include <stdio.h>
#include <windows.h>

/* The bytes of the file, as the plug-in asks for them. */
static FILE* file;

static void KELVO_METHOD SkipR(KELVO_SELF(KelvoMediaReader)) {}
static int64_t KELVO_METHOD Seek(KELVO_SELF(KelvoMediaReader), int64_t offset, uint32_t origin) {
  return fseek(file, (long)offset, (int)origin) == 0 ? ftell(file) : KELVO_SEEK_FAILED;
}
static int32_t KELVO_METHOD Read(KELVO_SELF(KelvoMediaReader), void* to, uint32_t n,
                                 uint32_t* got) {
  *got = (uint32_t)fread(to, 1, n, file);
  return !ferror(file);
}
static int32_t KELVO_METHOD ShutFile(KELVO_SELF(KelvoMediaReader)) { /* comes twice */
  if (file) fclose(file);
  file = NULL;
  return 1;
}
static int32_t KELVO_METHOD FindFile(KELVO_SELF(KelvoMediaReader), const wchar_t* path,
                                     uint32_t mode) {
  (void)mode;
  return (file = _wfopen(path, L"rb")) != NULL;
}
static int32_t KELVO_METHOD Release(KELVO_SELF(KelvoMediaReader), KelvoHostWord a,
                                    KelvoHostWord b) {
  (void)a, (void)b;
  return 1;
}

/* The sound device. The plug-in's buffers are the device's: both are WAVEHDRs. */
static HWND window;
static HWAVEOUT device;
static WAVEHDR headers[8];
static char data[8][16384];

static void KELVO_METHOD SkipO(KELVO_SELF(KelvoAudioOutput)) {}
static int32_t KELVO_METHOD OpenDevice(KELVO_SELF(KelvoAudioOutput), uint32_t count, uint32_t bytes,
                                       uint32_t channels, uint32_t rate, uint32_t bits) {
  WAVEFORMATEX format = {WAVE_FORMAT_PCM,
                         (WORD)channels,
                         rate,
                         rate * channels * bits / 8,
                         (WORD)(channels * bits / 8),
                         (WORD)bits,
                         0};
  uint32_t i;
  if (waveOutOpen(&device, WAVE_MAPPER, &format, 0, 0, CALLBACK_NULL) != 0) {
    PostMessageW(window, KELVO_MESSAGE_END_OF_PLAYBACK, 0, 0); /* the plug-in posts none then */
    return 0;
  }
  for (i = 0; i < count; ++i) {
    headers[i].lpData = data[i];
    headers[i].dwBufferLength = bytes;
    waveOutPrepareHeader(device, &headers[i], sizeof(WAVEHDR));
  }
  return 1;
}
static void KELVO_METHOD ShutDevice(KELVO_SELF(KelvoAudioOutput)) {
  waveOutReset(device);
  waveOutClose(device);
  device = NULL;
}
static int IsQueued(const WAVEHDR* header) {
  return (header->dwFlags & WHDR_INQUEUE) != 0;
}
static KelvoOutputBuffer* KELVO_METHOD GetBuffer(KELVO_SELF(KelvoAudioOutput)) {
  int i = 0; /* until one has been played, or Reset has returned all */
  for (; IsQueued(&headers[i]); i = (i + 1) % 8) Sleep(1);
  return (KelvoOutputBuffer*)&headers[i];
}
static int32_t KELVO_METHOD Write(KELVO_SELF(KelvoAudioOutput), KelvoOutputBuffer* it,
                                  uint32_t unused) {
  (void)unused;
  return waveOutWrite(device, (WAVEHDR*)it, sizeof(WAVEHDR)) == 0;
}
static void KELVO_METHOD Pause(KELVO_SELF(KelvoAudioOutput), uint32_t pause) {
  pause ? waveOutPause(device) : waveOutRestart(device);
}
static void KELVO_METHOD Reset(KELVO_SELF(KelvoAudioOutput)) {
  waveOutReset(device);
}
static uint32_t KELVO_METHOD Played(KELVO_SELF(KelvoAudioOutput), KelvoHostWord a,
                                    KelvoHostWord b) {
  MMTIME time = {TIME_SAMPLES, {0}};
  (void)a, (void)b;
  waveOutGetPosition(device, &time, sizeof(time));
  return time.u.sample;
}
static int32_t KELVO_METHOD Drained(KELVO_SELF(KelvoAudioOutput)) {
  int i = 0;
  while (i < 8 && !IsQueued(&headers[i])) ++i;
  return i == 8;
}

static const KelvoMediaReaderTable reading = {SkipR, Seek, Read, ShutFile, FindFile, Release};
static const KelvoAudioOutputTable playing = {SkipO,      SkipO,     SkipO,  SkipO,  OpenDevice,
                                              ShutDevice, GetBuffer, SkipO,  Write,  Pause,
                                              SkipO,      Reset,     Played, Drained};
static KelvoMediaReader reader = {&reading};
static KelvoAudioOutput output = {&playing};

int wmain(int count, wchar_t** words) {
  HMODULE library = LoadLibraryW(L"Kelvo.dll");
  KelvoGetFeatureFunction get_feature =
      (KelvoGetFeatureFunction)(void (*)(void))GetProcAddress(library, "GetFeature");
  KelvoOggVorbisInput* ogg = get_feature ? get_feature(KELVO_FEATURE_OGG_VORBIS) : NULL;
  KelvoBookmarks* bookmarks = get_feature ? get_feature(KELVO_FEATURE_BOOKMARKS) : NULL;
  MSG message = {0};

  window = CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 240, 320, NULL, NULL, NULL, NULL);
  if (!get_feature) puts("Kelvo.dll, or a DLL that it needs, is not beside this program");
  if (!get_feature || count != 2) return 1;
  ogg->reader = &reader;
  ogg->output = &output;
  ogg->table->SetNotifyWindow(KELVO_ON(ogg), window);
  if (!ogg->table->Open(KELVO_ON(ogg), words[1], 0)) return puts("not an Ogg Vorbis file"), 1;
  ogg->table->Play(KELVO_ON(ogg));
  while (GetMessageW(&message, NULL, 0, 0) > 0 &&
         message.message != KELVO_MESSAGE_END_OF_PLAYBACK) {
    DispatchMessageW(&message);
  }
  ogg->table->Stop(KELVO_ON(ogg));
  ogg->table->Close(KELVO_ON(ogg), 0, 0);

  bookmarks->table->LoadBookmarks(KELVO_ON(bookmarks));
  bookmarks->table->SetLastPlayed(KELVO_ON(bookmarks), words[1], 0, words[1]);
  bookmarks->table->ShowBookmarks(KELVO_ON(bookmarks), window);
  FreeLibrary(library);
  return 0;
}
