// The Ogg Vorbis plug-in inside the real DLL, every slot called by its number.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>
#include <string>

#include "kelvo/features.h"
#include "kelvo/input_plugin.h"
#include "tests/support/end_messages.h"
#include "tests/support/loaded_library.h"
#include "tests/support/media_files.h"
#include "tests/support/memory_reader.h"
#include "tests/support/ogg_files.h"
#include "tests/support/raw_slot.h"
#include "tests/support/recording_output.h"
#include "tests/support/wide_text.h"

namespace kelvo {
namespace {

using test::CallSlot;
using test::Utf8;

// The fields as a host in another language would lay them out.
struct RawPlugin {
  void** table;
  uintptr_t host_context;
  void* output;
  void* reader;
  uint32_t state;
  void* notify_window;
  void** stream;
  uint32_t total_frames;
  uint32_t reserved[2];
  uint32_t channels, sample_rate, bit_rate;
  uint32_t more_reserved[2];
  HANDLE thread;
  int32_t thread_priority;
  HANDLE ready_event;
  struct {
    CRITICAL_SECTION section;
    int32_t depth;
  } lock;
  wchar_t path[260];
  OutputBuffer* current;
  uint32_t buffer_bytes, free_bytes;
  uint32_t seek_pending, run_output, stop_request, seek_base;
};
static_assert(sizeof(void*) != 4 || sizeof(RawPlugin) == 648);

// A host's own table in place of the object's, with two operations of its own.
struct HostTable {
  static constexpr int kSlots = 18;
  static void* slots[kSlots];
  static void** own;
  static std::atomic<int> queries;
  static std::mutex mutex;
  static std::string states;

  static void KELVO_SLOT_CALL SetState(void* object, uint32_t state) {
    const std::lock_guard<std::mutex> guard(mutex);
    states += std::to_string(state);
    reinterpret_cast<void(KELVO_SLOT_CALL*)(void*, uint32_t)>(own[5])(object, state);
  }
  static uint32_t KELVO_SLOT_CALL GetState(void* object) {
    ++queries;
    return reinterpret_cast<uint32_t(KELVO_SLOT_CALL*)(void*)>(own[6])(object);
  }
  static void Install(RawPlugin* plugin) {
    own = plugin->table;
    std::copy(own, own + kSlots, slots);
    slots[5] = reinterpret_cast<void*>(&SetState);
    slots[6] = reinterpret_cast<void*>(&GetState);
    plugin->table = slots;
  }
};
void* HostTable::slots[kSlots];
void** HostTable::own;
std::atomic<int> HostTable::queries;
std::mutex HostTable::mutex;
std::string HostTable::states;

// Operations by their slots, as one that plays a file uses them.
class SlotsTest : public ::testing::Test {
 protected:
  ~SlotsTest() override {
    Notify(nullptr);
    plugin_->output = plugin_->reader = nullptr;
  }
  // Opens a file that lies in memory.
  void Open(const char* name, const wchar_t* path) {
    file_ = test::ReadMedia(name);
    reader_.emplace(file_);
    plugin_->reader = static_cast<MediaReader*>(&*reader_);
    plugin_->output = static_cast<AudioOutput*>(&output_);
    ASSERT_EQ((CallSlot<int32_t, const wchar_t*, uint32_t>(object_, 14, path, 5)), 1);
  }
  template <class Result>
  Result Call(int slot) {
    return CallSlot<Result>(object_, slot);
  }
  int32_t CallWithWords(int slot, HostWord a, HostWord b) {
    return CallSlot<int32_t, HostWord, HostWord>(object_, slot, a, b);
  }
  int32_t Seek(int32_t ms) { return CallSlot<int32_t, int32_t>(object_, 9, ms); }
  void Pause() { Call<void>(11); }
  int32_t Play() { return Call<int32_t>(12); }
  void Notify(void* window) { CallSlot<void, void*>(object_, 17, window); }

  const test::LoadedLibrary library_;
  void* const object_ = library_.Get(kFeatureOggVorbis);
  RawPlugin* const plugin_ = static_cast<RawPlugin*>(object_);
  std::vector<char> file_;
  std::optional<test::MemoryReader> reader_;
  test::RecordingOutput output_;
  test::EndMessages ends_;
};

TEST_F(SlotsTest, AnswerWithoutAFile) {
  EXPECT_EQ(plugin_->host_context, 0u);
  EXPECT_EQ(plugin_->state, 1u);
  Call<void>(0);
  Pause();
  for (const int slot : {3, 10, 12}) EXPECT_EQ(Call<int32_t>(slot), 0) << slot;
  for (const int slot : {4, 13}) EXPECT_EQ(CallWithWords(slot, 0, 0), 0) << slot;
  for (const int slot : {7, 8}) EXPECT_EQ(Call<uint32_t>(slot), 0u) << slot;
  for (const uint32_t state : {3u, 1u}) {
    CallSlot<void, uint32_t>(object_, 5, state);
    EXPECT_EQ(plugin_->state, state);
    EXPECT_EQ(Call<uint32_t>(6), state);
  }
  EXPECT_EQ(Seek(5), 0);
  EXPECT_EQ((CallSlot<int32_t, const wchar_t*, uint32_t>(object_, 14, L"x", 0)), 0);
}

TEST_F(SlotsTest, PlayAFileAsTheDecoderGivesIt) {
  Open("sample.ogg", L"\\sample.ogg");
  wchar_t title[kMaxText];
  EXPECT_EQ((CallSlot<int32_t, wchar_t*>(object_, 1, title)), 1);
  EXPECT_EQ(Utf8(title), "The Ring Buffers - Eight Bars");
  MediaInfo info = {};
  CallSlot<void, MediaInfo*>(object_, 2, &info);
  EXPECT_EQ(Utf8(info.genre), "Folk");
  EXPECT_EQ(info.sample_rate, 44100u);
  EXPECT_EQ(info.track, 3);
  EXPECT_EQ(Call<int32_t>(3), 8000);
  Notify(ends_.window());

  output_.SetHold(true);
  ASSERT_EQ(Play(), 1);
  output_.WaitUntilFull();
  EXPECT_EQ(Call<uint32_t>(6), 2u);
  Pause();
  EXPECT_EQ(plugin_->state, 3u);
  ASSERT_EQ(Play(), 1);
  EXPECT_EQ(Seek(8000), 0);
  ASSERT_EQ(Seek(5000), 1);
  EXPECT_EQ(CallWithWords(4, 6, 7), 5000);
  EXPECT_EQ(output_.last_words(), "6,7");
  output_.SetHold(false);
  ends_.WaitForNext();
  EXPECT_TRUE(output_.pcm() == test::DecodeDirectly(file_, 44100 * 5));
  EXPECT_EQ(Call<int32_t>(10), 0);
  EXPECT_EQ(CallWithWords(13, 1, 2), 1);
}

TEST_F(SlotsTest, KeepTheFieldsInTheirPlaces) {
  output_.SetHold(true);
  EXPECT_EQ(plugin_->thread, INVALID_HANDLE_VALUE);
  EXPECT_EQ(plugin_->thread_priority, 3);
  EXPECT_EQ(plugin_->stream, nullptr);
  for (uint32_t& word : plugin_->reserved) word = 9;
  for (uint32_t& word : plugin_->more_reserved) word = 9;
  Open("tone_44100_6ch.ogg", L"\\six.ogg");
  EXPECT_EQ(plugin_->stream[0], plugin_->reader);
  EXPECT_EQ(*reinterpret_cast<uint32_t*>(&plugin_->stream[1]), 0u);
  EXPECT_EQ(plugin_->stream[2], plugin_->reader) << "the decoder's source";
  EXPECT_EQ(plugin_->total_frames, 88200u);
  EXPECT_EQ(plugin_->channels, 6u);
  EXPECT_EQ(plugin_->sample_rate, 44100u);
  EXPECT_GT(plugin_->bit_rate, 100u);
  EXPECT_EQ(plugin_->reserved[0] + plugin_->reserved[1], 0u);
  EXPECT_EQ(plugin_->more_reserved[0] + plugin_->more_reserved[1], 0u);
  EXPECT_STREQ(plugin_->path, L"\\six.ogg");
  Notify(&file_);
  EXPECT_EQ(plugin_->notify_window, &file_);
  Notify(nullptr);

  plugin_->thread_priority = 2;
  ASSERT_EQ(Play(), 1);
  output_.WaitUntilFull();
  EXPECT_EQ(GetThreadPriority(plugin_->thread), THREAD_PRIORITY_ABOVE_NORMAL);
  EXPECT_EQ(WaitForSingleObject(plugin_->ready_event, 0), WAIT_OBJECT_0);
  EXPECT_EQ(plugin_->current, nullptr) << "handed over, and it waits for the next";
  EXPECT_EQ(plugin_->buffer_bytes, 16384u);
  EXPECT_EQ(plugin_->run_output, 1u);
  EXPECT_EQ(plugin_->lock.depth, 0);
  EnterCriticalSection(&plugin_->lock.section);
  LeaveCriticalSection(&plugin_->lock.section);
  Pause();
  EXPECT_EQ(plugin_->run_output, 0u);
  Call<int32_t>(10);
  EXPECT_EQ(plugin_->thread, nullptr);
  EXPECT_EQ(plugin_->stop_request + plugin_->run_output + plugin_->free_bytes, 0u);
  ASSERT_EQ(Seek(500), 1);
  EXPECT_EQ(plugin_->seek_pending, 1u);
  EXPECT_EQ(plugin_->seek_base, 22050u);
  EXPECT_EQ(CallWithWords(13, 1, 2), 1);
  EXPECT_EQ(plugin_->stream, nullptr);
  plugin_->thread_priority = 3;
}

TEST_F(SlotsTest, ChangeTheStateThroughTheHostsOwnTable) {
  HostTable::Install(plugin_);
  Open("tone_8000_mono.ogg", L"x");
  Notify(ends_.window());
  ASSERT_EQ(Seek(1950), 1);
  output_.SetHold(true);
  ASSERT_EQ(Play(), 1);
  while (output_.calls() != "reset open reset run run ") Sleep(1);  // it drains
  const int queries = HostTable::queries;
  Pause();
  Play();
  while (HostTable::queries < queries + 4) Sleep(1);  // the fourth is the draining thread's
  output_.SetHold(false);
  ends_.WaitForNext();
  Call<int32_t>(10);
  EXPECT_EQ(HostTable::states, "2321");
  plugin_->table = HostTable::own;
  CallWithWords(13, 1, 2);
}

TEST_F(SlotsTest, TellAboutAFileByPath) {
  wchar_t display[kMaxText], album[kMaxText], artist[kMaxText], title[kMaxText];
  MediaInfo info = {};
  uint32_t length = 0;
  EXPECT_EQ((CallSlot<int32_t, const wchar_t*, wchar_t*, wchar_t*, MediaInfo*, uint32_t*, uint32_t*,
                      wchar_t*, wchar_t*>(object_, 16, L"..\\..\\media\\sample.ogg", display, album,
                                          &info, &length, nullptr, artist, title)),
            1);
  EXPECT_EQ(Utf8(display), "The Ring Buffers - Eight Bars");
  EXPECT_EQ(Utf8(album), "Fixed Point");
  EXPECT_EQ(Utf8(artist), "The Ring Buffers");
  EXPECT_EQ(Utf8(title), "Eight Bars");
  EXPECT_EQ(length, 8000u);
  EXPECT_EQ(info.stereo, 1u);
}

}  // namespace
}  // namespace kelvo
