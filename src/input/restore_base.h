// The last step of a plug-in's Destroy when its memory stays: from then on its slots do what a bare
// plug-in's do, so that a late call by the host is harmless.
#pragma once

#include <new>

#include "base/memory/heap.h"
#include "kelvo/input_plugin.h"

namespace kelvo {

// What is left of a destroyed plug-in: the base operations, as many as its callers know, and the
// fields that belong to the host. The real class's members must not need their destructors any
// more.
template <class Interface>
class DestroyedPlugin final : public Interface {
 public:
  explicit DestroyedPlugin(const Interface& plugin) noexcept : Interface(plugin) {}
  DestroyedPlugin(const DestroyedPlugin&) noexcept = default;

  void Destroy(uint32_t flags) noexcept override {
    if ((flags & 1) != 0) HeapFree(this);
  }
};

// (The real destructor of a static object still runs at unload and must find nothing left to do.)
template <class Interface>
void RestoreBaseOperations(Interface* plugin) noexcept {
  static_assert(sizeof(DestroyedPlugin<Interface>) == sizeof(Interface));
  const DestroyedPlugin<Interface> rest(*plugin);
  ::new (static_cast<void*>(plugin)) DestroyedPlugin<Interface>(rest);
}

}  // namespace kelvo
