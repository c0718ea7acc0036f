#include "host/player/adding.h"

namespace velmora {

void Adding::Start(const std::vector<std::wstring>& paths, bool replace) {
  if (search_ && !replace) {
    next_.insert(next_.end(), paths.begin(), paths.end());
    return;
  }
  next_.clear();
  replace_ = replace;
  added_ = left_out_ = 0;
  steps_ = 0;
  full_ = false;
  search_ = std::make_unique<FileSearch>(paths);
}

bool Adding::Step() {
  if (!search_) return false;
  ++steps_;
  replaced_ = false;
  std::vector<std::wstring> files;
  const bool more = search_->Step(&files);
  if (!files.empty()) Take(files);
  if (more && !full_) return true;
  left_out_ += search_->left_out();
  search_.reset();
  if (next_.empty() || full_) return false;
  search_ = std::make_unique<FileSearch>(next_);
  next_.clear();
  return true;
}

void Adding::Take(const std::vector<std::wstring>& files) {
  if (replace_) player_.Clear();
  replaced_ = replace_;
  replace_ = false;
  const size_t taken = player_.Append(files);
  added_ += taken;
  full_ = taken < files.size();
}

void Adding::Stop() {
  if (search_) left_out_ += search_->left_out();
  search_.reset();
  next_.clear();
}

}  // namespace velmora
