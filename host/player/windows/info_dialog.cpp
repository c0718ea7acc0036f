#include "host/player/windows/choices.h"

#include "host/input.h"
#include "host/res/dialog_ids.h"
#include "host/text.h"
#include "host/texts.h"
#include "host/trouble.h"

namespace velmora {
namespace {

constexpr int kFields = TEXT_INFO_FILE - TEXT_INFO_TITLE + 1;

struct Fields {
  std::wstring values[kFields];
  std::wstring& operator[](int text) { return values[text - TEXT_INFO_TITLE]; }
};

// "Ogg Vorbis, 44100 Hz, 128 kbit/s, stereo"
std::wstring FormatText(const Input& input, const kelvo::MediaInfo& format) {
  std::wstring text = input.has_own_output() ? L"Windows Media" : L"Ogg Vorbis";
  if (format.sample_rate != 0) text += L", " + input.SampleRate(format);
  if (format.bit_rate != 0) text += L", " + std::to_wstring(format.bit_rate) + L" kbit/s";
  return text + L", " + Text(format.stereo ? TEXT_STEREO : TEXT_MONO);
}

Fields FieldsOf(const Library& library, const std::wstring& path) {
  Fields fields;
  fields[TEXT_INFO_FILE] = path;
  const Input input(library, path);
  FileInfo info;
  if (input.Missing() || !input.GetInfo(path, &info)) {
    fields[TEXT_INFO_FORMAT] = Describe(TroubleOf(library, path));
    return fields;
  }
  fields[TEXT_INFO_TITLE] = info.title;
  fields[TEXT_INFO_ARTIST] = info.artist;
  fields[TEXT_INFO_ALBUM] = info.album;
  fields[TEXT_INFO_GENRE] = info.format.genre;
  fields[TEXT_INFO_LENGTH] = MinutesSeconds(info.length_ms).text;
  fields[TEXT_INFO_FORMAT] = FormatText(input, info.format);
  return fields;
}

void Begin(HWND dialog, const Fields& fields) {
  PlaceOver(dialog, GetWindow(dialog, GW_OWNER));
  SetWindowTextW(dialog, Text(TEXT_CAPTION_INFO).c_str());
  SetDlgItemTextW(dialog, IDCANCEL, Text(TEXT_CLOSE).c_str());
  for (int i = 0; i < kFields; ++i) {
    SetDlgItemTextW(dialog, CONTROL_INFO_LABELS + i, Text(TEXT_INFO_TITLE + i).c_str());
    SetDlgItemTextW(dialog, CONTROL_INFO_VALUES + i, fields.values[i].c_str());
  }
}

INT_PTR CALLBACK Procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam) {
  if (message == WM_INITDIALOG) {
    Begin(dialog, *reinterpret_cast<const Fields*>(lparam));
    SetFocus(GetDlgItem(dialog, IDCANCEL));
    return FALSE;
  }
  if (message != WM_COMMAND || (LOWORD(wparam) != IDCANCEL && LOWORD(wparam) != IDOK)) return FALSE;
  EndDialog(dialog, 0);
  return TRUE;
}

}  // namespace

void ShowInfo(HWND parent, const Library& library, const std::wstring& path) {
  const Fields fields = FieldsOf(library, path);
  DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(DIALOG_INFO), parent, Procedure,
                  reinterpret_cast<LPARAM>(&fields));
}

}  // namespace velmora
