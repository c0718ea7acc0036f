// The control with files that are none, and calls out of turn.
#include <windows.h>

#include <stdio.h>

#include <limits>
#include <vector>

#include "tests/pocketpc/hosted_player.h"
#include "tests/pocketpc/wav_bytes.h"

namespace kelvo {
namespace {

using PlayerErrors = HostedPlayer;

std::vector<char> Bytes(const wchar_t* path) {
  std::vector<char> bytes(1 << 20);
  FILE* file = _wfopen(path, L"rb");
  if (!file) return {};
  bytes.resize(fread(bytes.data(), 1, bytes.size(), file));
  fclose(file);
  return bytes;
}

void Save(const wchar_t* path, const std::vector<char>& bytes) {
  FILE* file = _wfopen(path, L"wb");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(fwrite(bytes.data(), 1, bytes.size(), file), bytes.size());
  fclose(file);
}

TEST_F(PlayerErrors, RefusesWhatIsNoMedia) {
  const std::vector<char> whole = Bytes(kStereoFile);
  ASSERT_GT(whole.size(), 10000u);
  Save(L"bad_empty.wma", {});
  Save(L"bad_text.wma", std::vector<char>(5000, 'x'));
  Save(L"bad_magic.wma", std::vector<char>(whole.begin(), whole.begin() + 16));
  Save(L"bad_header.wma", std::vector<char>(whole.begin(), whole.begin() + 200));
  UseSink(L"player_refused.wav", true);
  for (const wchar_t* path :
       {L"no such file.wma", L"no such folder\\a.wma", L"..", L"", L"bad_empty.wma",
        L"bad_text.wma", L"bad_magic.wma", L"bad_header.wma"}) {
    SCOPED_TRACE(std::string(path, path + wcslen(path)));
    ASSERT_EQ(Open(kMonoFile), S_OK) << "the good file before is given up";
    EXPECT_TRUE(FAILED(Open(path)));
    if (!path[0]) continue;  // refused before anything is given up
    EXPECT_TRUE(FAILED(Play()));
    EXPECT_TRUE(FAILED(Seek(0.5)));
    EXPECT_EQ(Seconds(kPlayerGetPosition), -1);
    EXPECT_EQ(Seconds(kPlayerGetDuration), -1);
  }
  EXPECT_TRUE(FAILED(PlayerOpenFile(control_.get(), nullptr)));
  EXPECT_EQ(Stop(), S_OK);
  EXPECT_EQ(events_.CountOver(), 0);
}

TEST_F(PlayerErrors, CutFileEndsOnce) {
  const std::vector<char> whole = Bytes(kStereoFile);
  ASSERT_GT(whole.size(), 10000u);
  Save(L"bad_cut.wma", std::vector<char>(whole.begin(), whole.begin() + whole.size() / 2));
  UseSink(L"player_cut.wav", true);
  ASSERT_EQ(Open(L"bad_cut.wma"), S_OK);
  ASSERT_EQ(Play(), S_OK);
  ASSERT_TRUE(events_.WaitOver());
  ASSERT_EQ(Stop(), S_OK);
  EXPECT_EQ(events_.CountOver(), 1);
  EXPECT_GT(ReadWav(L"player_cut.wav").samples.size(), 44100u);
}

TEST_F(PlayerErrors, RefusesTimes) {
  ASSERT_EQ(Open(kMonoFile), S_OK);
  ASSERT_EQ(Seek(0.25), S_OK);
  for (const double seconds : {-1.0, -1e-9, 1e300, std::numeric_limits<double>::infinity(),
                               std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_TRUE(FAILED(Seek(seconds))) << seconds;
  }
  EXPECT_EQ(Seconds(kPlayerGetPosition), 0.25);
  EXPECT_EQ(PlayerGetSeconds(control_.get(), kPlayerGetPosition, nullptr), E_POINTER);
}

TEST_F(PlayerErrors, NoDeviceNoPlay) {
  UseSink(L"no such folder\\player.wav", true);
  ASSERT_EQ(Open(kMonoFile), S_OK);
  EXPECT_TRUE(FAILED(Play()));
  EXPECT_EQ(events_.CountOver(), 0);
  UseSink(L"player_device.wav", true);
  EXPECT_EQ(Play(), S_OK) << "there is one now";
  EXPECT_TRUE(events_.WaitOver());
}

TEST_F(PlayerErrors, ConnectionPointRefuses) {
  DWORD cookie = 7;
  EXPECT_EQ(point_->Advise(nullptr, &cookie), E_POINTER);
  EXPECT_EQ(point_->Advise(window_ ? &events_ : nullptr, nullptr), E_POINTER);
  EXPECT_EQ(point_->Advise(control_.get(), &cookie), S_OK) << "anything that is called by number";
  EXPECT_EQ(point_->Unadvise(cookie), S_OK);
  for (const DWORD stranger : {DWORD{0}, cookie, DWORD{99}, ~DWORD{0}}) {
    EXPECT_TRUE(FAILED(point_->Unadvise(stranger))) << stranger;
  }
}

}  // namespace
}  // namespace kelvo
