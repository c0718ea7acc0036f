#include "base/memory/array.h"
#include "base/text/wide.h"
#include "tools/kelvotool/command.h"
#include "tools/kelvotool/console.h"

namespace kelvo::tool {
namespace {

constexpr const Command* kCommands[] = {&kTagsCommand,     &kPlaylistCommand, &kSaveCommand,
                                        &kLintCommand,     &kRepairCommand,   &kSkinCommand,
                                        &kLanguageCommand, &kEffectsCommand};

constexpr char kExitCodes[] =
    "\n"
    "Exit code: 0 when all went well, 1 when some file could not be used or written or something\n"
    "was found, 2 for wrong usage.\n";

void PrintHelp(Stream stream) noexcept {
  Print(stream, "Usage: kelvotool COMMAND [OPTION...] ARGUMENT...\n\n");
  for (const Command* command : kCommands) Print(stream, command->help);
  Print(stream,
        "  COMMAND --help         one command's part of this text\n"
        "  --help                 this text\n");
  Print(stream, kExitCodes);
}

const Command* FindCommand(const wchar_t* name) noexcept {
  for (const Command* command : kCommands) {
    if (CompareWide(command->name, name) == 0) return command;
  }
  return nullptr;
}

// Takes the options out of what follows the command's name. Null, or what is wrong.
const char* TakeOptions(const Command& command, int count, const wchar_t* const* words,
                        Array<const wchar_t*>* paths, Arguments* arguments) noexcept {
  for (int i = 0; i < count; ++i) {
    const auto is = [&](unsigned option, const wchar_t* name) {
      return (command.options & option) != 0 && CompareWide(words[i], name) == 0;
    };
    if (is(kForce, L"--force")) {
      arguments->forced = true;
    } else if (is(kDevice, L"--device") || is(kLibrary, L"--library")) {
      if (i + 1 == count) return "an option lacks its value; see kelvotool --help";
      (is(kDevice, L"--device") ? arguments->device : arguments->library) = words[i + 1];
      ++i;
    } else if (words[i][0] == '-' && words[i][1] == '-') {
      return "no such option; see kelvotool --help";
    } else if (!paths->Append(words[i])) {
      return "no memory";
    }
  }
  if ((command.required & kDevice) != 0 && !arguments->device) {
    return "--device FOLDER is missing; see kelvotool --help";
  }
  if (paths->size() < command.least_paths) return "a file is missing; see kelvotool --help";
  if (paths->size() > command.most_paths) return "too many files; see kelvotool --help";
  arguments->paths = paths->data();
  arguments->count = paths->size();
  return nullptr;
}

}  // namespace

int Run(int count, const wchar_t* const* words) noexcept {
  const auto asks_for_help = [&](int at) {
    return count > at && CompareWide(words[at], L"--help") == 0;
  };
  if (asks_for_help(0)) {
    PrintHelp(Stream::kOut);
    return 0;
  }
  const Command* const command = count > 0 ? FindCommand(words[0]) : nullptr;
  if (!command) {
    if (count > 0) PrintError(words[0], "no such command");
    PrintHelp(Stream::kError);
    return 2;
  }
  if (asks_for_help(1)) {
    Print(Stream::kOut, command->help);
    Print(Stream::kOut, kExitCodes);
    return 0;
  }
  Array<const wchar_t*> paths;
  Arguments arguments = {};
  if (const char* wrong = TakeOptions(*command, count - 1, words + 1, &paths, &arguments)) {
    PrintError(words[0], wrong);
    return 2;
  }
  return command->run(arguments);
}

}  // namespace kelvo::tool
