#include "host/player/session.h"

#include <limits.h>
#include <stdint.h>

#include <algorithm>

namespace velmora {
namespace {

constexpr size_t kMaxPathBytes = 3 * 260;
constexpr int kFarthest = 30000;  // of a window's place

// Reads "n" or "n,n,..." of exactly `count` numbers of `low` to `high`.
bool ReadNumbers(const std::string& text, int* numbers, size_t count, int low, int high) {
  size_t at = 0;
  for (size_t i = 0; i < count; ++i) {
    if (i > 0 && (at >= text.size() || text[at++] != ',')) return false;
    const bool negative = at < text.size() && text[at] == '-';
    if (negative) ++at;
    const size_t first = at;
    long value = 0;
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
      value = value * 10 + (text[at] - '0');
      if (value > INT_MAX / 10) return false;
    }
    if (at == first) return false;
    if (negative) value = -value;
    if (value < low || value > high) return false;
    numbers[i] = static_cast<int>(value);
  }
  return at == text.size();
}

void PrintNumbers(const char* name, const int* numbers, size_t count, std::string* text) {
  *text += name;
  for (size_t i = 0; i < count; ++i) *text += (i == 0 ? "=" : ",") + std::to_string(numbers[i]);
  *text += "\n";
}

struct NumberField {
  const char* name;
  int low, high;
  int (*get)(const Session&);
  void (*set)(Session*, int);
};

constexpr NumberField kNumbers[] = {
    {"volume", 0, 100, [](const Session& s) { return s.volume; },
     [](Session* s, int n) { s->volume = n; }},
    {"balance", -100, 100, [](const Session& s) { return s.balance; },
     [](Session* s, int n) { s->balance = n; }},
    {"shuffle", 0, 1, [](const Session& s) { return int{s.shuffle}; },
     [](Session* s, int n) { s->shuffle = n != 0; }},
    {"repeat", 0, 1, [](const Session& s) { return int{s.repeat}; },
     [](Session* s, int n) { s->repeat = n != 0; }},
    {"equalizer_on", 0, 1, [](const Session& s) { return int{s.equalizer.on}; },
     [](Session* s, int n) { s->equalizer.on = n != 0; }},
    {"preamp", 0, kLastSlider, [](const Session& s) { return int{s.equalizer.preamp}; },
     [](Session* s, int n) { s->equalizer.preamp = static_cast<uint8_t>(n); }},
    {"bass", 0, kMaxBass, [](const Session& s) { return int{s.equalizer.bass}; },
     [](Session* s, int n) { s->equalizer.bass = static_cast<uint8_t>(n); }},
    {"double_size", 0, 1, [](const Session& s) { return int{s.double_size}; },
     [](Session* s, int n) { s->double_size = n != 0; }},
    {"remaining_time", 0, 1, [](const Session& s) { return int{s.remaining_time}; },
     [](Session* s, int n) { s->remaining_time = n != 0; }},
    {"visual", 0, 2, [](const Session& s) { return s.visual; },
     [](Session* s, int n) { s->visual = n; }},
    {"current", 0, kMaxSessionTracks, [](const Session& s) { return static_cast<int>(s.current); },
     [](Session* s, int n) { s->current = static_cast<size_t>(n); }},
};

constexpr struct {
  const char* name;
  WindowPlace Session::*place;
} kPlaces[] = {
    {"main_window", &Session::main_window},
    {"equalizer_window", &Session::equalizer_window},
    {"playlist_window", &Session::playlist_window},
};

void TakeBands(const std::string& value, Session* session) {
  int bands[kEqualizerBands];
  if (!ReadNumbers(value, bands, kEqualizerBands, 0, kLastSlider)) return;
  for (size_t i = 0; i < kEqualizerBands; ++i) {
    session->equalizer.bands[i] = static_cast<uint8_t>(bands[i]);
  }
}

void TakePlace(const std::string& value, WindowPlace* place) {
  int n[5];
  if (!ReadNumbers(value, n, 5, -kFarthest, kFarthest)) return;
  if (n[0] < 0 || n[0] > 1 || n[3] < 0 || n[4] < 0) return;
  *place = {n[0] == 1, n[1], n[2], n[3], n[4]};
}

void TakeLine(const std::string& name, const std::string& value, Session* session) {
  if (name == "skin" && value.size() <= kMaxPathBytes) session->skin = value;
  if (name == "bands") TakeBands(value, session);
  if (name == "track" && !value.empty() && value.size() <= kMaxPathBytes &&
      session->tracks.size() < kMaxSessionTracks) {
    session->tracks.push_back(value);
  }
  for (const NumberField& field : kNumbers) {
    int number;
    if (name == field.name && ReadNumbers(value, &number, 1, field.low, field.high)) {
      field.set(session, number);
    }
  }
  for (const auto& window : kPlaces) {
    if (name == window.name) TakePlace(value, &(session->*window.place));
  }
}

}  // namespace

std::string PrintSession(const Session& session) {
  std::string text;
  for (const NumberField& field : kNumbers) {
    const int number = field.get(session);
    PrintNumbers(field.name, &number, 1, &text);
  }
  int bands[kEqualizerBands];
  for (size_t i = 0; i < kEqualizerBands; ++i) bands[i] = session.equalizer.bands[i];
  PrintNumbers("bands", bands, kEqualizerBands, &text);
  for (const auto& window : kPlaces) {
    const WindowPlace& place = session.*window.place;
    const int numbers[] = {place.open, place.x, place.y, place.width, place.height};
    PrintNumbers(window.name, numbers, 5, &text);
  }
  text += "skin=" + session.skin + "\n";
  for (const std::string& track : session.tracks) text += "track=" + track + "\n";
  return text;
}

Session ParseSession(const std::string& text) {
  Session session;
  for (size_t at = 0; at < text.size();) {
    const size_t end = std::min(text.find('\n', at), text.size());
    std::string line = text.substr(at, end - at);
    at = end + 1;
    while (!line.empty() && line.back() == '\r') line.pop_back();
    const size_t sign = line.find('=');
    if (sign != std::string::npos) TakeLine(line.substr(0, sign), line.substr(sign + 1), &session);
  }
  if (session.current >= session.tracks.size()) session.current = 0;
  return session;
}

}  // namespace velmora
