// Kelvo.dll as a host has it: loaded, asked by number, unloaded.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "kelvo/features.h"
#include "tests/support/wide_text.h"

namespace kelvo::test {

class LoadedLibrary {
 public:
  LoadedLibrary() : module_(LoadLibraryW(L"Kelvo.dll")) {
    EXPECT_TRUE(module_);
    get_ = reinterpret_cast<GetFeatureFunction>(
        reinterpret_cast<void*>(GetProcAddress(module_, "GetFeature")));
  }
  ~LoadedLibrary() { FreeLibrary(module_); }
  LoadedLibrary(const LoadedLibrary&) = delete;
  LoadedLibrary& operator=(const LoadedLibrary&) = delete;

  void* Get(int32_t id) const { return get_(id); }
  std::string Version() const {
    return Utf8(static_cast<const wchar_t*>(get_(kFeatureVersionText)));
  }

 private:
  HMODULE module_;
  GetFeatureFunction get_;
};

}  // namespace kelvo::test
