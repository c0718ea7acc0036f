#pragma once

#include <stddef.h>
#include <stdint.h>

namespace kelvo::selftest {

// The text that becomes the report's file: 8 bits, lines ended by CR LF. What does not fit is lost.
class Report {
 public:
  void Add(const char* ascii) noexcept;
  void Add(uint32_t number) noexcept;
  void AddHex(uint32_t number) noexcept;
  // As ASCII, "?" for all else.
  void Add(const wchar_t* text) noexcept;
  template <class... Parts>
  void Line(Parts... parts) noexcept {
    (Add(parts), ...);
    Add("\r\n");
  }
  // A line about something that is right or wrong.
  template <class... Parts>
  void Check(bool is_right, Parts... parts) noexcept {
    Add(is_right ? "ok      " : "WRONG   ");
    Line(parts...);
    if (!is_right) ++faults_;
  }

  int faults() const noexcept { return faults_; }
  const char* text() const noexcept { return text_; }
  size_t length() const noexcept { return length_; }

 private:
  static constexpr size_t kCapacity = 8192;
  char text_[kCapacity] = {};
  size_t length_ = 0;
  int faults_ = 0;
};

}  // namespace kelvo::selftest
