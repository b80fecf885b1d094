#!/usr/bin/env bash
# The demo: builds xpsim and the plug-in, installs the example scripts into the build's
# simulator root, runs xpsim for a few simulated seconds and shows what the plug-in wrote
# and a picture of the last frame.
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
# The README shows copies of the pictures (docs/images/).
build/sim/xpsim --root "$root" --scenario examples/demo.txt || status=$?
for file in "$scripts/VorlithLog.txt" "$scripts/VorlithOutput.txt"; do
  echo "---- $file ----"
  cat "$file" 2>/dev/null || echo "(not written)"
done
[ -f build/demo.png ] && echo "---- pictures: build/demo.png, build/demo-panel.png, build/demo-scripts.png ----"
exit "$status"
