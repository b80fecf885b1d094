#!/usr/bin/env bash
# Builds and runs every test: the whole tree with the plug-in embedding Python 3, the
# examples type-checked against the generated stubs, the
# fuzz again under the sanitizers (build-asan/), then the plug-in and its end-to-end
# tests (the fuzz among them) again embedding Python 2.7 (build-py2/).
set -euo pipefail
cd "$(dirname "$0")/.."
bash tools/deps.sh
export CCACHE_BASEDIR="${CCACHE_BASEDIR:-$PWD}"
jobs=$(nproc)

echo "==== Python 3: everything ===="
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVORLITH_PYTHON=3
cmake --build build -j"$jobs"
ctest --test-dir build --output-on-failure -j"$jobs"

echo "==== The examples against the stubs (mypy) ===="
# Out-lists start as empty lists, which mypy would want annotated.
MYPYPATH=build/api/stubs mypy --check-untyped-defs --disable-error-code var-annotated examples/*.py

echo "==== Python 3 under AddressSanitizer and UndefinedBehaviorSanitizer: the fuzz ===="
# Only what the fuzz runs: the plug-in and the host.
cmake -S . -B build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVORLITH_PYTHON=3 -DVORLITH_SANITIZE=ON \
  -DVORLITH_BENCH=OFF
cmake --build build-asan -j"$jobs" --target vorlith xpsim
ctest --test-dir build-asan --output-on-failure -j"$jobs" -R '^py3\.Fuzz\.'

echo "==== Python 2.7: the plug-in and its end-to-end tests ===="
# Only the plug-in differs: the host and the other tests were checked above.
configure_log=$(mktemp)
trap 'rm -f "$configure_log"' EXIT
if cmake -S . -B build-py2 -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVORLITH_PYTHON=2 -DVORLITH_BENCH=OFF \
     >"$configure_log" 2>&1; then
  cmake --build build-py2 -j"$jobs" --target plugin_tests
  ctest --test-dir build-py2 --output-on-failure -j"$jobs" -R '^py2\.'
elif grep -q "No shared Python 2.7 found" "$configure_log"; then
  echo
  echo "########################################################################"
  echo "###  NO PYTHON 2.7 FOUND: the Python 2.7 variant was NOT built or     ###"
  echo "###  tested. Install one (pyenv install 2.7.18 with --enable-shared)  ###"
  echo "###  or set VORLITH_PYTHON2_ROOT; only Python 3 was tested.           ###"
  echo "########################################################################"
  echo
else
  cat "$configure_log"
  exit 1
fi

# The tests' size beside the code's (C, C++ and Python lines; data files aside).
count_lines() { find "$@" -type f \( -name '*.c' -o -name '*.cpp' -o -name '*.h' -o -name '*.py' \) -print0 |
                xargs -0 cat | wc -l; }
test_lines=$(count_lines tests)
code_lines=$(count_lines plugin sim sdk)
echo "test lines: $test_lines, code lines: $code_lines ($((100 * test_lines / code_lines))% of the code)"
