#include "entry/language/dialog_guard.h"

namespace kelvo {

bool DialogGuard::open_ = false;

}  // namespace kelvo
