// ID3v1 tags as they are described: read for the catalog, shown and rewritten by the tag editor.
// Fields are whole, with the NULs behind their text.
#pragma once

#include <stdlib.h>

#include <optional>
#include <string>

namespace kelvo::oracle {

struct Id3v1Texts {  // 31 bytes each
  std::string title, artist, album, genre;
};

struct EditorTexts {
  std::string title, artist, album, year, track, comment;
};

inline std::string GenreOf(unsigned number) {
  static const char* const kNames =
      "Blues|Classic Rock|Country|Dance|Disco|Funk|Grunge|Hip-Hop|Jazz|Metal|New Age|Oldies|Other|"
      "Pop|R&B|Rap|Reggae|Rock|Techno|Industrial|Alternative|Ska|Death Metal|Pranks|Soundtrack|"
      "Euro-Techno|Ambient|Trip-Hop|Vocal|Jazz+Funk|Fusion|Trance|Classical|Instrumental|Acid|"
      "House|"
      "Game|Sound Clip|Gospel|Noise|AlternRock|Bass|Soul|Punk|Space|Meditative|Instrumental Pop|"
      "Instrumental Rock|Ethnic|Gothic|Darkwave|Techno-Industrial|Electronic|Pop-Folk|Eurodance|"
      "Dream|Southern Rock|Comedy|Cult|Gangsta|Top 40|Christian Rap|Pop/Funk|Jungle|"
      "Native American|Cabaret|New Wave|Psychadelic|Rave|Showtunes|Trailer|Lo-Fi|Tribal|Acid Punk|"
      "Acid Jazz|Polka|Retro|Musical|Rock & Roll|Hard Rock|Folk|Folk-Rock|National Folk|Swing|"
      "Fast Fusion|Bebob|Latin|Revival|Celtic|Bluegrass|Avantgarde|Gothic Rock|Progressive Rock|"
      "Psychedelic Rock|Symphonic Rock|Slow Rock|Big Band|Chorus|Easy Listening|Acoustic|Humour|"
      "Speech|Chanson|Opera|Chamber Music|Sonata|Symphony|Booty Bass|Primus|Porn Groove|Satire|"
      "Slow Jam|Club|Tango|Samba|Folklore|Ballad|Power Ballad|Rhythmic Soul|Freestyle|Duet|"
      "Punk Rock|Drum Solo|A capella|Euro-House|Dance Hall|Goa|Drum & Bass|Club-House|Hardcore|"
      "Terror|Indie|BritPop|Afro-Punk|Polsk Punk|Beat|Christian Gangsta Rap|Heavy Metal|"
      "Black Metal|Crossover|Contemporary Christian|Christian Rock|Merengue|Salsa|Thrash Metal|"
      "Anime|JPop|Synthpop|||";
  std::string names = kNames;
  if (number > 149) return "";
  for (; number > 0; --number) names.erase(0, names.find('|') + 1);
  return names.substr(0, names.find('|'));
}

inline std::string Trimmed(std::string field) {
  for (size_t i = field.size(); i > 0 && (field[i - 1] == ' ' || field[i - 1] == 0); --i) {
    field[i - 1] = 0;
  }
  return field;
}

// 128 bytes, or nothing.
inline std::optional<std::string> LastTag(const std::string& file) {
  if (file.size() < 128) return {};
  const std::string tag = file.substr(file.size() - 128);
  if (tag[0] != 'T' || tag[1] != 'A' || tag[2] != 'G') return {};
  return tag;
}

inline std::optional<Id3v1Texts> ReadId3v1Model(const std::string& file) {
  const auto tag = LastTag(file);
  if (!tag) return {};
  const auto field = [&](size_t at) { return Trimmed(tag->substr(at, 30)) + '\0'; };
  std::string genre = GenreOf(static_cast<unsigned char>((*tag)[127]));
  genre.resize(31);
  return Id3v1Texts{field(3), field(33), field(63), genre};
}

// The text up to its first NUL.
inline std::string UpToNul(const std::string& bytes) {
  return bytes.c_str();
}

inline std::string TitleModel(const std::optional<Id3v1Texts>& tag, const std::string& path) {
  if (tag && tag->title[0] != 0) return UpToNul(tag->title);
  if (path.size() < 2) return "";
  return path.substr(path.rfind('\\') + 1);  // all of it without a backslash
}

inline std::string TextOrUnknown(const std::optional<Id3v1Texts>& tag,
                                 std::string Id3v1Texts::*field) {
  return tag && ((*tag).*field)[0] != 0 ? UpToNul((*tag).*field) : "Unknown";
}

class TagEditorModel {
 public:
  TagEditorModel(const std::string& file, bool entry_has_tag) : buffer_(128, '\0') {
    const auto tag = LastTag(file);
    if (!entry_has_tag || !tag) return;
    buffer_ = *tag;
    present_ = true;
    for (const auto& [at, length] : {std::pair(93, 4), {3, 30}, {63, 30}, {33, 30}, {97, 28}}) {
      const auto from = static_cast<size_t>(at), bytes = static_cast<size_t>(length);
      buffer_.replace(from, bytes, Trimmed(buffer_.substr(from, bytes)));
    }
  }
  EditorTexts Shown() const {
    if (!present_) return {};
    const auto text = [&](size_t at, size_t bytes) { return UpToNul(buffer_.substr(at, bytes)); };
    const bool has_track = buffer_[126] != 0 && buffer_[125] == 0;
    const std::string track = std::to_string(static_cast<unsigned char>(buffer_[126]));
    return {text(3, 30), text(33, 30),           text(63, 30),
            text(93, 4), has_track ? track : "", text(97, 29)};
  }
  // Returns what the file holds then.
  std::string Update(const std::string& file, const EditorTexts& texts, uint32_t genre) {
    buffer_.assign(128, '\0');
    buffer_[127] = static_cast<char>(genre);
    const auto put = [&](const std::string& text, size_t at, size_t most) {
      for (size_t i = 0; i < most && i < text.size(); ++i) buffer_[at + i] = text[i];
    };
    put(texts.title, 3, 30);
    put(texts.album, 63, 30);
    put(texts.artist, 33, 30);
    put(texts.year, 93, 4);
    const std::string track = texts.track.substr(0, 2);
    if (!track.empty()) buffer_[126] = static_cast<char>(atoi(track.c_str()));
    put(texts.comment, 97, track.empty() ? 30 : 28);
    put("TAG", 0, 3);
    return file.substr(0, file.size() - (present_ ? 128 : 0)) + buffer_;
  }

 private:
  std::string buffer_;
  bool present_ = false;
};

}  // namespace kelvo::oracle
