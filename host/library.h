// Kelvo.dll, loaded from the folder of this program.
#pragma once

#include <kelvo/features.h>
#include <windows.h>

namespace velmora {

class Library {
 public:
  Library();
  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  bool loaded() const { return get_feature_ != nullptr; }

  // The feature's object, or null when the library does not offer it.
  template <class Feature>
  Feature* Get(kelvo::FeatureId id) const {
    return loaded() ? static_cast<Feature*>(get_feature_(id)) : nullptr;
  }

 private:
  HMODULE module_;
  kelvo::GetFeatureFunction get_feature_ = nullptr;
};

}  // namespace velmora
