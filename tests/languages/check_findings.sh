#!/usr/bin/env bash
# Runs a command, "kelvotool language FILE...", and compares what it finds with the lines of a file; the
# findings that something is missing are counted instead.
#   check_findings.sh EXPECTED COMMAND...
set -euo pipefail
expected="$1"
shift
found="$("$@" | tr -d '\r')" || true
{ grep -v ': missing' <<<"$found" && grep -c ': missing' <<<"$found"; } | diff "$expected" -
