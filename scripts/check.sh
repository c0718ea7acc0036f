#!/usr/bin/env bash
# What can be said about the tree without building it: format, lint, order of includes, scripts, whether
# what is generated is what its source says.
#   scripts/check.sh [contract|format|includes|scripts|tidy]...   (default: all of them)
#   scripts/check.sh --fix                               formats every file
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"
cd "$kelvo_root"
commands="$kelvo_build/native/compile_commands.json"

configure() {
  cmake --preset native >/dev/null
}

# Every C++ file; the headers of the resource scripts are lists of texts.
formatted_files() {
  git ls-files -z '*.cpp' '*.h' ':!src/res'
}

check_format() {
  formatted_files | xargs -0 clang-format --dry-run -Werror
}

# The library's portable code, as the native build compiles it.
check_tidy() {
  configure
  python3 -c '
import json, sys
files = {entry["file"] for entry in json.load(open(sys.argv[1]))}
print("\n".join(sorted(file for file in files if file.startswith(sys.argv[2] + "/src/"))))
' "$commands" "$kelvo_root" | xargs -P "$(nproc)" -n 4 clang-tidy -p "$kelvo_build/native" --quiet 2>/dev/null
}

check_includes() {
  configure
  python3 -B tests/checks/check_includes.py "$kelvo_root" "$commands"
}

# The headers for hosts and the tables of docs/slots.md.
check_contract() {
  python3 -B tools/contract/generate.py --check
}

check_scripts() {
  shellcheck -S warning -x .ci/run scripts/*.sh scripts/lib/*.sh
}

"$kelvo_root/scripts/setup.sh" >/dev/null
if [[ ${1:-} == --fix ]]; then
  formatted_files | xargs -0 clang-format -i
  exit
fi
[[ $# -gt 0 ]] || set -- contract format includes scripts tidy
result=0
for name in "$@"; do
  if found="$("check_$name" 2>&1)"; then
    say "check: $name"
  else
    printf '%s\n' "$found"
    say "check: $name FAILED"
    result=1
  fi
done
exit "$result"
