#include "host/texts.h"

#include <algorithm>

namespace velmora {
namespace {

constexpr int kTextsInBlock = 16;  // of a string table's resource

constexpr LANGID kBuiltIn = MAKELANGID(LANG_ENGLISH, SUBLANG_ENGLISH_US);

LANGID chosen = kBuiltIn;

struct KeyName {
  const wchar_t* key;
  int text;
};
constexpr KeyName kKeyNames[] = {{L"Ctrl", TEXT_KEY_CONTROL},
                                 {L"Shift", TEXT_KEY_SHIFT},
                                 {L"Alt", TEXT_KEY_ALT},
                                 {L"Ins", TEXT_KEY_INSERT},
                                 {L"Del", TEXT_KEY_DELETE}};

std::wstring KeyText(const std::wstring& key) {
  for (const KeyName& name : kKeyNames) {
    if (key == name.key) return Text(name.text);
  }
  return key;
}

}  // namespace

void UseTexts(LANGID language) {
  chosen = language;
}

// LoadString would choose by the system's language.
std::wstring TextIn(LANGID language, int id) {
  const HRSRC place = FindResourceExW(nullptr, reinterpret_cast<const wchar_t*>(RT_STRING),
                                      MAKEINTRESOURCEW(id / kTextsInBlock + 1), language);
  const HGLOBAL block = place ? LoadResource(nullptr, place) : nullptr;
  const auto* text = static_cast<const wchar_t*>(block ? LockResource(block) : nullptr);
  if (!text) return L"";
  // Texts follow each other, each behind its length.
  for (int i = 0; i < id % kTextsInBlock; ++i) text += 1 + *text;
  return std::wstring(text + 1, *text);
}

std::wstring Text(int id) {
  const std::wstring text = TextIn(chosen, id);
  return text.empty() ? TextIn(kBuiltIn, id) : text;
}

std::wstring Text(int id, std::initializer_list<std::wstring> values) {
  std::wstring text = Text(id);
  size_t at = 0;
  for (const std::wstring& value : values) {
    at = text.find(L"%s", at);
    if (at == std::wstring::npos) break;
    text.replace(at, 2, value);
    at += value.size();
  }
  return text;
}

std::wstring WithKeys(int id, const std::wstring& keys) {
  std::wstring text = Text(id) + L'\t';
  for (size_t at = 0; at < keys.size();) {
    const size_t end = std::min(keys.find(L'+', at), keys.size());
    if (at > 0) text += L'+';
    text += KeyText(keys.substr(at, end - at));
    at = end + 1;
  }
  return text;
}

}  // namespace velmora
