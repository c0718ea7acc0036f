#pragma once

namespace kelvo {

// Of the bookmarks window and the dialog for saving a playlist only one is open at a time. Held
// while one of them is; user-interface thread only.
class DialogGuard {
 public:
  DialogGuard() noexcept : taken_(!open_) { open_ = true; }
  ~DialogGuard() {
    if (taken_) open_ = false;
  }
  DialogGuard(const DialogGuard&) = delete;
  DialogGuard& operator=(const DialogGuard&) = delete;

  // False: another one is open.
  bool taken() const noexcept { return taken_; }

 private:
  static bool open_;
  bool taken_;
};

}  // namespace kelvo
