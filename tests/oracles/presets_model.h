// Equalizer presets as they are described.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/oracles/model_text.h"

namespace kelvo::oracle {

class PresetsModel {
 public:
  // Of each base folder: names and bytes, in the order in which the file system reports them. A
  // base folder without the folder "presets" is not in it.
  struct File {
    std::string name, bytes;
  };
  std::map<std::string, std::vector<File>> folders;
  std::vector<std::string> names;  // at most 200; slots behind them are empty

  int32_t Find(const std::string& name) const {
    for (size_t i = 0; i < names.size(); ++i) {
      if (Folded(names[i]) == Folded(name + ".eqf")) return static_cast<int32_t>(i);
    }
    return -1;
  }
  std::string Name(int32_t index) const {
    const std::string file = Slot(index);
    return file.substr(0, file.find('.'));
  }
  // The eleven bytes, or nothing.
  std::string Read(int32_t index, const std::string& base) {
    const File* const file = Slot(index).empty() ? nullptr : FileOf(base, Slot(index));
    return file && file->bytes.size() >= 31 ? file->bytes.substr(20, 11) : "";
  }
  int32_t List(const std::string& base) {
    if (folders.count(base) == 0) return static_cast<int32_t>(names.size());
    for (const File& file : folders[base]) {
      const size_t size = file.name.size();
      if (size < 4 || Folded(file.name.substr(size - 4)) != ".EQF") continue;
      if (names.size() < 200) names.push_back(file.name);
    }
    return static_cast<int32_t>(names.size());
  }
  // What the user answers: a name or a refusal, and then whether to overwrite.
  bool Save(const std::string& setting, const std::string& base, const std::string* typed,
            bool overwrites, bool* asked) {
    *asked = false;
    if (!typed) return false;
    File* const old = FileOf(base, *typed + ".eqf");
    if (old) *asked = true;
    if (old && !overwrites) return false;
    const bool can_be_named = typed->find_first_of("\\/:*?\"<>|\t") == std::string::npos;
    const size_t path_length = (base + "\\presets\\" + *typed + ".eqf").size();
    if (!can_be_named || path_length >= 260 || folders.count(base) == 0) return false;
    std::string field = typed->substr(0, 19);
    field.resize(20);
    const File made = {*typed + ".eqf", field + setting};
    if (old) {
      *old = made;  // in the old one's place, spelled as it was typed
    } else {
      folders[base].push_back(made);
    }
    return true;
  }

 private:
  std::string Slot(int32_t index) const {
    return index >= 0 && index < static_cast<int32_t>(names.size())
               ? names[static_cast<size_t>(index)]
               : "";
  }
  File* FileOf(const std::string& base, const std::string& name) {
    for (auto& [folder, files] : folders) {
      for (File& file : files) {
        if (folder == base && Folded(file.name) == Folded(name)) return &file;
      }
    }
    return nullptr;
  }
};

}  // namespace kelvo::oracle
