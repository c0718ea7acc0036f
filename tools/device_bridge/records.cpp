#include "device_functions.h"

#include <string.h>

#include "faults.h"

namespace bridge {
namespace {

// The function, which of its arguments points to a record, and the record's size on the device.
struct Rule {
  const char* name;
  int argument;
  uint32_t bytes;
  uint32_t function;
};
Rule g_rules[] = {
    {"PropertySheetW", 0, 40, 0},          {"CreatePropertySheetPageW", 0, 40, 0},
    {"GetMenuItemInfoW", 3, 44, 0},        {"SetMenuItemInfoW", 3, 44, 0},
    {"InsertMenuItemW", 3, 44, 0},         {"TrackPopupMenuEx", 5, 20, 0},
    {"InitCommonControlsEx", 0, 8, 0},     {"GetVersionExW", 0, 276, 0},
    {"GlobalMemoryStatus", 0, 32, 0},      {"SHCreateMenuBar", 0, 32, 0},
    {"SHHandleWMSettingChange", 3, 12, 0}, {"SHHandleWMActivate", 3, 12, 0},
    {"SHRecognizeGesture", 0, 20, 0},
};

}  // namespace

void WatchRecords(uint32_t function, const char* name) {
  for (Rule& rule : g_rules) {
    if (strcmp(rule.name, name) == 0) rule.function = function;
  }
}

void CheckRecords(uint32_t function, const uint32_t* words) {
  for (const Rule& rule : g_rules) {
    if (rule.function != function || words[rule.argument] == 0) continue;
    const uint32_t bytes = *reinterpret_cast<const uint32_t*>(words[rule.argument]);
    if (bytes != rule.bytes) Fail("%s: a record of %u bytes, not %u", rule.name, bytes, rule.bytes);
  }
}

}  // namespace bridge
