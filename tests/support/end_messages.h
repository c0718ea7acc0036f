// Counts the end-of-playback messages that a plug-in posts: with a message window under Windows,
// with the post hook natively.
#pragma once

namespace kelvo::test {

class EndMessages {
 public:
  EndMessages();
  ~EndMessages();
  EndMessages(const EndMessages&) = delete;
  EndMessages& operator=(const EndMessages&) = delete;

  void* window() const { return window_; }
  // Takes one message, waiting for it as long as it needs (the test's time limit is the bound).
  void WaitForNext();
  // How many have arrived and have not been taken.
  int count();
  void Clear();

 private:
  void* window_;
};

}  // namespace kelvo::test
