// The header of an ASF file as it is described, read in one go from its begin.
#pragma once

#include <stdio.h>

#include <string>

#include "tests/oracles/model_text.h"

namespace kelvo::oracle {

class AsfModel {
 public:
  bool is_asf = false;
  Units title, author, album, genre;
  uint32_t sample_rate = 0, bit_rate = 0, stereo = 0, length_ms = 0, sdk_version = 0;
  int32_t track = 100000;

  explicit AsfModel(const std::string& file) : file_(file) {
    if (file.size() < 30 || Guid() != "75B22630668E11CFA6D900AA0062CE6C") return;
    is_asf = true;
    Number(8);
    const uint64_t objects = Number(4);
    Number(2);
    for (uint64_t i = 0; i < objects && !broken_; ++i) Object();
  }

  Units DisplayTitle(const Units& path) const {
    if (!title.empty() || !author.empty()) return (author + u" - " + title).substr(0, 259);
    const Units name = path.substr(path.rfind(u'\\') + 1);
    const size_t point = name.rfind(u'.');
    return point != Units::npos && point >= 1 ? name.substr(0, point) : name;
  }

 private:
  // A read beyond the end breaks the header off for good, and gives nothing.
  std::string Take(uint64_t bytes) {
    broken_ = broken_ || bytes > file_.size() - at_;
    if (broken_) return "";
    at_ += bytes;
    return file_.substr(at_ - bytes, bytes);
  }
  uint64_t Number(size_t bytes) { return Little(Take(bytes)); }
  // As it is written, without its dashes.
  std::string Guid() {
    std::string text;
    for (const int bytes : {4, 2, 2, 1, 1, 1, 1, 1, 1, 1, 1}) {
      char digits[9];
      snprintf(digits, sizeof(digits), "%0*X", 2 * bytes, static_cast<unsigned>(Number(bytes)));
      text += digits;
    }
    return text;
  }
  static Units Text(const std::string& raw) { return UpToNul(UnitsOf(raw)); }
  // At the first digit from there on.
  static uint32_t FirstNumber(const Units& text, size_t from) {
    uint64_t number = 0;
    for (size_t i = text.find_first_of(u"0123456789", from);
         i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
      if (number < INT32_MAX) number = number * 10 + (text[i] - u'0');
    }
    return static_cast<uint32_t>(number > INT32_MAX ? INT32_MAX : number);
  }
  static void KeepFirst(Units* kept, const Units& value) {
    if (kept->empty()) *kept = value;
  }

  void Object() {
    const std::string id = Guid();
    const uint64_t size = Number(8);
    if (broken_) return;
    if (id == "75B22633668E11CFA6D900AA0062CE6C") return ContentDescription();
    if (id == "D2D0A440E30711D297F000A0C95EA850") return ExtendedDescription();
    if (id == "7BF875CE468D11D18D82006097C9A2B2") return BitRates();
    if (id == "86D15240311D11D0A3A400A0C90348F6") return Codecs();
    if (id == "8CABDCA1A94711CF8EE400C00C205365") return FileProperties();
    Take(size - 24);  // less than 24 leads beyond the end
  }
  void ContentDescription() {
    uint64_t lengths[5];
    for (uint64_t& length : lengths) length = Number(2);
    KeepFirst(&title, Text(Take(lengths[0]).substr(0, 518)));
    KeepFirst(&author, Text(Take(lengths[1]).substr(0, 518)));
    for (int i = 2; i < 5; ++i) Take(lengths[i]);
  }
  void ExtendedDescription() {
    for (uint64_t left = Number(2); left > 0; --left) {
      const Units name = Upper(Text(Take(Number(2)).substr(0, 2048)));
      const uint64_t type = Number(2), length = Number(2);
      const bool is_number = type >= 2 && type <= 5;
      const uint64_t number = !is_number ? 0 : Number(type == 4 ? 8 : type == 5 ? 2 : 4);
      const std::string raw = is_number ? "" : Take(length);
      if (broken_) return;
      const Units text = type == 0 ? Text(raw.substr(0, 8192)) : u"";
      if (name == u"WM/GENRE") KeepFirst(&genre, text.substr(0, 31));
      if (name == u"WM/ALBUMTITLE") KeepFirst(&album, text.substr(0, 259));
      const bool from_one = name == u"WM/TRACKNUMBER";
      if ((from_one || name == u"WM/TRACK") && track == 100000) {
        track = static_cast<int32_t>(number + (from_one ? 0 : 1));
      }
      if (name != u"WMFSDKVERSION" || type != 0) continue;
      sdk_version = text[0] >= '0' && text[0] <= '9' ? FirstNumber(text, 0) : 0;
    }
  }
  void BitRates() {
    const uint64_t count = Number(2);
    uint64_t sum = 0;
    for (uint64_t i = 0; i < count; ++i) Number(2), sum += Number(4);
    if (broken_ || count == 0 || bit_rate != 0) return;
    bit_rate = static_cast<uint32_t>(sum / count / 1000);
  }
  void Codecs() {
    Take(16);
    uint32_t rate = 0, bits = 0, is_stereo = 0;
    const uint64_t count = Number(4);
    if (broken_) return;
    for (uint64_t i = 0; i < count && !broken_; ++i) {
      const uint64_t type = Number(2);
      Take(Number(2) * 2);
      const Units text = Text(Take(Number(2) * 2).substr(0, 8192));
      Take(Number(2));
      if (type == 2 && !text.empty() && !broken_) {
        const bool variable = Upper(text.substr(0, 3)) == u"VBR";
        bits = variable ? 0 : FirstNumber(text, 0);
        rate = FirstNumber(text, variable ? text.find(u',') : text.find(u"kbps"));
        if (text.find(u"stereo") != Units::npos) is_stereo = 1;
      }
    }
    sample_rate = rate;
    stereo = is_stereo;
    if (bit_rate == 0) bit_rate = bits;
  }
  void FileProperties() {
    Take(40);
    const uint64_t duration = Number(8);
    Take(8);
    const uint64_t preroll = Number(8);
    Take(16);
    if (!broken_) length_ms = static_cast<uint32_t>((duration - preroll * 10000) / 10000);
  }

  const std::string& file_;
  uint64_t at_ = 0;
  bool broken_ = false;
};

}  // namespace kelvo::oracle
