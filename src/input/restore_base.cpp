#include "input/restore_base.h"

#include <new>

namespace kelvo {
namespace {

class BarePlugin final : public InputPlugin {};

}  // namespace

void RestoreBaseOperations(InputPlugin* plugin) noexcept {
  ::new (static_cast<void*>(plugin)) BarePlugin;
}

}  // namespace kelvo
