#!/usr/bin/env bash
# Writes OUT/stubs/*.pyi and OUT/api.md: xpsim runs lin.xpl for one frame with
# VL_StubWriter.py as its only script. Fails, naming them, on functions without an
# argument list in ARGUMENTS (or lists for functions no module has).
# usage: make_stubs.sh XPSIM LIN_XPL ARGUMENTS OUT
set -euo pipefail
xpsim=$1 plugin=$2 arguments=$3 out=$4
here=$(cd "$(dirname "$0")" && pwd)
root=$out/root
rm -rf "$root" "$out/stubs" "$out/result.txt"
mkdir -p "$root/Resources/plugins/Vorlith/64" "$root/Resources/plugins/PythonScripts" "$out/stubs"
cp "$plugin" "$root/Resources/plugins/Vorlith/64/lin.xpl"
cp "$here/VL_StubWriter.py" "$root/Resources/plugins/PythonScripts/"
VORLITH_STUBS_OUT=$out VORLITH_STUBS_ARGUMENTS=$arguments "$xpsim" --root "$root" --frames 1 >/dev/null
if ! grep -q "^ok: " "$out/result.txt" 2>/dev/null; then
  cat "$out/result.txt" 2>/dev/null || tail -n 20 "$root/Resources/plugins/PythonScripts/VorlithLog.txt"
  exit 1
fi
cat "$out/result.txt"
