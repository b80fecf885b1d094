#!/usr/bin/env bash
# The demo: builds xpsim and the plug-in, installs the example scripts into the build's
# simulator root, runs xpsim for a few simulated seconds and shows what the plug-in wrote.
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/deps.sh
export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$PWD}"
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build -j"$(nproc)" --target xpsim vorlith example_hello

root="$PWD/build/simroot"   # the build installs lin.xpl in Resources/plugins/Vorlith/64
scripts="$root/Resources/plugins/PythonScripts"
rm -rf "$scripts"
mkdir -p "$scripts"
cp examples/VL_*.py "$scripts/"

status=0
build/sim/xpsim --root "$root" --seconds 5 || status=$?
for file in "$scripts/VorlithLog.txt" "$scripts/VorlithOutput.txt"; do
  echo "---- $file ----"
  cat "$file" 2>/dev/null || echo "(not written)"
done
exit "$status"
