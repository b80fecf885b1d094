#!/usr/bin/env bash
# The stubs' source stays whole: a function the plug-in has but the argument lists lack
# fails the stubs (named in the message), and docs/api.md is the reference the build made.
# usage: check_stubs.sh XPSIM LIN_XPL ARGUMENTS API_DIR DOCS_API_MD
set -euo pipefail
xpsim=$1 plugin=$2 arguments=$3 api=$4 docs=$5
here=$(cd "$(dirname "$0")" && pwd)
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
# The last function's line dropped.
last=$(grep -v '^#' "$arguments" | tail -n 1)
function=${last%%(*}
grep -vxF "$last" "$arguments" >"$tmp/arguments.txt"
if bash "$here/make_stubs.sh" "$xpsim" "$plugin" "$tmp/arguments.txt" "$tmp/out" >"$tmp/log" 2>&1; then
  echo "FAIL: stubs made without an argument list for $function"; exit 1
fi
grep -q "^$function has no argument list" "$tmp/out/result.txt" || { echo "FAIL: $function not named:"; cat "$tmp/log"; exit 1; }
if ! cmp -s "$api/api.md" "$docs"; then
  echo "FAIL: docs/api.md is not the reference the build made; refresh it with"
  echo "  cp $api/api.md $docs"
  exit 1
fi
echo "ok: a missing argument list is named ($function); docs/api.md is current"
