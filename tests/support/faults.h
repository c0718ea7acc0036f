// Faults on demand: the n-th request for memory, the n-th read, the n-th call of files (MemoryFiles
// counts with this too), and sweeps over all of them.
#pragma once

#include <gtest/gtest.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <sstream>
#include <string>

#include "base/bytes/memory_source.h"
#include "base/memory/heap.h"

namespace kelvo::test {

// Lets `successes` calls through and fails the next one, or all later ones. Negative: none fails.
class Countdown {
 public:
  enum class Mode { kOnce, kFromThenOn };
  explicit Countdown(long successes = -1, Mode mode = Mode::kOnce)
      : left_(successes), mode_(mode) {}

  // To be asked once a call.
  bool Fails() {
    ++made_;
    const bool fails = left_ == 0 || (triggered_ && mode_ == Mode::kFromThenOn);
    if (left_ >= 0) --left_;
    triggered_ |= fails;
    return fails;
  }
  // False once a sweep has come past the last call: nothing failed any more.
  bool triggered() const { return triggered_; }
  long made() const { return made_; }  // calls

 private:
  long left_;
  Mode mode_;
  bool triggered_ = false;
  long made_ = 0;
};

// Requests for memory fail while it lives.
class HeapFaults {
 public:
  using Mode = Countdown::Mode;
  explicit HeapFaults(long successes, Mode mode = Mode::kOnce) : countdown_(successes, mode) {
    SetHeapFaultHook([](void* self) { return static_cast<HeapFaults*>(self)->countdown_.Fails(); },
                     this);
  }
  ~HeapFaults() { SetHeapFaultHook(nullptr, nullptr); }
  HeapFaults(const HeapFaults&) = delete;
  HeapFaults& operator=(const HeapFaults&) = delete;
  bool triggered() const { return countdown_.triggered(); }
  long made() const { return countdown_.made(); }

 private:
  Countdown countdown_;
};

// Bytes in memory whose reads fail from the n-th on.
class FailingSource final : public ByteSource {
 public:
  FailingSource(const std::string& bytes, long successes)
      : source_(bytes.data(), bytes.size()), countdown_(successes, Countdown::Mode::kFromThenOn) {}

  uint64_t SizeBytes() noexcept override { return source_.SizeBytes(); }
  ReadResult ReadAt(uint64_t offset, void* dst, size_t bytes) noexcept override {
    if (!countdown_.Fails()) return source_.ReadAt(offset, dst, bytes);
    memset(dst, 'x', bytes);  // unspecified
    return ReadResult::kFailed;
  }
  ReadResult ReadSome(uint64_t offset, void* dst, size_t bytes, size_t* got) noexcept override {
    *got = 0;
    return countdown_.Fails() ? ReadResult::kFailed : source_.ReadSome(offset, dst, bytes, got);
  }

  bool triggered() const { return countdown_.triggered(); }
  long reads() const { return countdown_.made(); }

 private:
  MemorySource source_;
  Countdown countdown_;
};

// How many calls all sweeps of the program have let fail; it says so at its end.
struct FaultCount {
  long faults = 0;
  ~FaultCount() {
    if (faults > 0) printf("%ld faults\n", faults);
  }
};
inline FaultCount g_fault_count;

// Of long sweeps each n-th call is tried, this or what KELVO_FAULTS_EACH says; 1 is all.
inline long FaultStep(long usual) {
  const char* each = getenv("KELVO_FAULTS_EACH");
  return each ? atol(each) : usual;
}

// Runs attempt(n), whose n-th call fails, for every n, until it returns false because nothing
// failed any more. Returns how many calls there are to fail.
template <class Attempt>
long Sweep(Attempt attempt) {
  for (long n = 0;; ++n, ++g_fault_count.faults) {
    SCOPED_TRACE(testing::Message() << "call " << n << " fails");
    if (!attempt(n) || testing::Test::HasFatalFailure()) return n;
  }
}

// Runs act() with every request for memory failing in turn, each followed by check(failed).
template <class Act, class Check>
long SweepHeap(Act act, Check check) {
  return Sweep([&](long n) {
    bool failed;
    {
      const HeapFaults faults(n);
      act();
      failed = faults.triggered();
    }
    check(failed);
    return failed;
  });
}

// Whether `part` is `whole` with some of its words left out.
inline bool IsPartInOrder(const std::string& part, const std::string& whole) {
  std::istringstream words(part), all(whole);
  std::string word, candidate;
  while (words >> word) {
    do {
      if (!(all >> candidate)) return false;
    } while (candidate != word);
  }
  return true;
}

// use(beginning) for every shorter beginning of the bytes.
template <class Use>
void SweepTruncations(const std::string& bytes, Use use) {
  for (size_t length = 0; length < bytes.size(); ++length) {
    SCOPED_TRACE(testing::Message() << "cut after " << length << " bytes");
    use(bytes.substr(0, length));
  }
}

}  // namespace kelvo::test
