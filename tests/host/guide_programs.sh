#!/usr/bin/env bash
# Builds the hosts of docs/host-guide.md with the lines that stand there; a warning is an error, clang's
# as well.   guide_programs.sh i686|x86_64
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
arch="$1"
built=0
while read -r command; do
  bash -c "${command//i686/$arch} -Werror"
  built=$((built + 1))
done < <(sed -n -e '/^    i686-w64-mingw32-/ { :more /\\$/ { N; s/\\\n//; b more }; p }' docs/host-guide.md)
[[ $built -eq 2 ]] || { echo "docs/host-guide.md: $built programs, not 2" >&2 && exit 1; }

library="$("$arch-w64-mingw32-g++-posix" -print-file-name=include/c++)"
options=(-target "$arch-w64-mingw32" -Wall -Wextra -pedantic -Werror -fsyntax-only -I include)
clang -std=c99 "${options[@]}" host/minimal/main.c
clang -std=c++17 -isystem "$library" -isystem "$library/$arch-w64-mingw32" "${options[@]}" host/minimal/main.cpp
