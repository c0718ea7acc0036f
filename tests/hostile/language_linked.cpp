// The program for translators says which parts of a language library the library uses.
#include "base/bytes/memory_source.h"
#include "tests/hostile/asker.h"
#include "tests/hostile/corpus.h"
#include "tools/kelvotool/console.h"
#include "tools/kelvotool/language_lint.h"

namespace kelvo {
namespace {

std::string g_printed;

}  // namespace

namespace tool {
void PrintBytes(Stream, const char* bytes, size_t count) noexcept {
  g_printed.append(bytes, count);
}
bool ErrorsAreWatched() noexcept {
  return true;
}
size_t EncodeUtf8(const wchar_t*, char*, size_t) noexcept {
  return 0;
}
}  // namespace tool

namespace hostile {

std::string LanguageAnswer(const Features&, const std::string& bytes) {
  const std::string whole = test::LanguagePe(WholeLanguage());
  MemorySource own_file(whole.data(), whole.size()), file(bytes.data(), bytes.size());
  tool::PeResources own, language;
  if (!own.Load(own_file) || !language.Load(file)) return "";
  g_printed.clear();
  tool::Findings findings(L"");
  tool::LintLanguage(own, language, &findings);
  std::string used;
  const auto add = [&](const char* part, const std::string& resource) {
    for (const char* what : {"missing", "not used", "does not ask"}) {
      if (g_printed.find(": " + resource + ": " + what) != std::string::npos) return;
    }
    used += (used.empty() ? "" : " ") + std::string(part);
  };
  add("text", "string 2000");
  add("dialog", "dialog 129");
  add("bar", "menu 134");
  return used;
}

}  // namespace hostile
}  // namespace kelvo
