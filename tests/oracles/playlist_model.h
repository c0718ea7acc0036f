// Playlists as they are described: whole texts, by recursion, without any bound.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tests/oracles/id3v1_model.h"
#include "tests/oracles/model_text.h"

namespace kelvo::oracle {

struct ListedFile {
  std::string path;
  std::optional<Id3v1Texts> tag;
};

class PlaylistModel {
 public:
  // The bytes of a file.
  std::function<std::optional<std::string>(const std::string& path)> find;
  // For files that name each other: with a bound no list inside itself is read either.
  size_t most_lists = 0;
  std::map<std::string, Id3v1Texts> information;  // what the plug-ins say, unlimited, by path
  bool wma_available = true;
  std::vector<ListedFile> list;

  void AddPath(const std::string& path) {
    if (path.size() < 4 || path[path.size() - 4] != '.') return;
    const std::string kind = Folded(path.substr(path.size() - 3));
    if (kind == "M3U" || kind == "PLS" || kind == "ASX") return ReadList(path, kind);
    const auto file = find(path);
    if (!file) return;
    if (kind == "MP3" || kind == "MP2" || kind == "MP1") {
      list.push_back({path, ReadId3v1Model(*file)});
    } else if (kind == "OGG" || ((kind == "WMA" || kind == "ASF") && wma_available)) {
      const Id3v1Texts& texts = information[path];
      list.push_back({path, Id3v1Texts{Cut(texts.title), Cut(texts.artist), Cut(texts.album),
                                       Cut(texts.genre)}});
    }
  }

  std::string WriteM3u() const {
    std::string file = "#EXTM3U:\r\n";
    for (const ListedFile& entry : list) {
      if (entry.tag) {
        file +=
            "#EXTINF:-1," + OneLine(entry.tag->artist) + " - " + OneLine(entry.tag->title) + "\r\n";
      }
      file += entry.path.substr(0, 255) + "\r\n";
    }
    return file;
  }

 private:
  // 30 characters into 29 bytes, and the NULs behind them.
  static std::string Cut(const std::string& text) {
    std::string field = text.substr(0, 30).substr(0, 29);
    field.resize(31);
    return field;
  }
  // A tag cannot end the line that it is written into.
  static std::string OneLine(const std::string& field) {
    std::string text = UpToNul(field).substr(0, 30);
    for (char& c : text) c = c == '\r' || c == '\n' ? ' ' : c;
    return text;
  }

  // What a 260-byte buffer gets of a file in text mode, call by call.
  std::vector<std::string> Lines(const std::string& path) const {
    const std::string bytes = find(path).value_or("");
    std::string text;
    for (size_t i = 0; i < bytes.size() && bytes[i] != 0x1A; ++i) {
      if (bytes.compare(i, 2, "\r\n") != 0) text += bytes[i];
    }
    std::vector<std::string> lines;
    for (size_t at = 0; at < text.size();) {
      std::string line;
      while (at < text.size() && line.size() < 259) {
        line += text[at++];
        if (line.back() == '\n') break;
      }
      lines.push_back(UpToNul(line));
    }
    return lines;
  }
  static std::string CutAtLineFeed(const std::string& line) {
    return line.substr(0, line.find('\n'));
  }
  static bool HasBackslash(const std::string& text) { return text.find('\\') != std::string::npos; }
  static std::string PrefixOf(const std::string& path) {
    return HasBackslash(path) ? path.substr(0, path.rfind('\\') + 1) : "";
  }
  void AddIfItFits(const std::string& path) {
    if (path.size() < 260) AddPath(path);
  }

  void ReadList(const std::string& path, const std::string& kind) {
    const bool is_inside = std::find(open_.begin(), open_.end(), Folded(path)) != open_.end();
    if (most_lists != 0 && (++lists_ > most_lists || is_inside)) return;
    open_.push_back(Folded(path));
    kind == "M3U" ? ReadM3u(path) : kind == "PLS" ? ReadPls(path) : ReadAsx(path);
    open_.pop_back();
  }
  void ReadM3u(const std::string& path) {
    for (const std::string& whole : Lines(path)) {
      if (whole[0] == '#') continue;
      const std::string line = CutAtLineFeed(whole);
      AddIfItFits(HasBackslash(line) ? line : PrefixOf(path) + line);
    }
  }
  void ReadPls(const std::string& path) {
    int expected = 1;
    for (const std::string& whole : Lines(path)) {
      if (whole[0] == '[') continue;
      const std::string key = "File" + std::to_string(expected) + "=";
      if (Folded(whole.substr(0, key.size())) != Folded(key)) continue;
      const std::string line = CutAtLineFeed(whole);
      AddIfItFits(line.substr(line.find('=') + 1));
      ++expected;
    }
  }
  void ReadAsx(const std::string& path) {
    for (const std::string& line : Lines(path)) {
      const size_t tag = Folded(line).find("<REF HREF");
      if (tag == std::string::npos) continue;
      const size_t quote = line.find('"', tag);
      if (quote == std::string::npos) continue;
      const std::string rest = line.substr(quote + 1);
      const std::string prefix = HasBackslash(rest) ? "" : PrefixOf(path);
      const size_t end = rest.find('"');
      if (end == std::string::npos) continue;
      AddIfItFits(prefix + rest.substr(0, end));
    }
  }

  size_t lists_ = 0;
  std::vector<std::string> open_;
};

}  // namespace kelvo::oracle
