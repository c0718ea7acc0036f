#!/usr/bin/env bash
# Finds out what the native tests of a core folder do not notice: makes single random changes to its
# code, builds, runs the tests that use it, and lists the changes that survive.
#   scripts/mutate.sh FOLDER [N] [--seed S] [--own]
# e.g. src/eq 100; default 100 changes, seed 1. --own runs the tests of that room, the oracles and the
# hostile files alone: what all the library uses is linked with every test.
# Works on a copy in build/mutate; the tree is never touched.
set -euo pipefail
# shellcheck source=scripts/lib/common.sh
. "$(dirname "${BASH_SOURCE[0]}")/lib/common.sh"

[[ $# -ge 1 && -d $kelvo_root/${1:-} ]] || die "usage: mutate.sh FOLDER [N] [--seed S] [--own]"
"$kelvo_root/scripts/setup.sh" >/dev/null
exec python3 -B "$kelvo_root/scripts/lib/mutate.py" "$kelvo_root" "$kelvo_build" "$@"
