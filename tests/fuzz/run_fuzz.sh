#!/usr/bin/env bash
# One fuzz run: a fresh simulator root with lin.xpl and VL_Fuzz.py, xpsim for a few
# simulated seconds with the given seed. Fails on a crash, a sanitizer report (they end
# the process with a non-zero status) or a run that did not reach the script's stop.
# usage: run_fuzz.sh XPSIM LIN_XPL FUZZ_SCRIPT WORK_DIR SEED SECONDS
set -euo pipefail
xpsim=$1 plugin=$2 script=$3 root=$4 seed=$5 seconds=$6
rm -rf "$root"
mkdir -p "$root/Resources/plugins/Vorlith/64" "$root/Resources/plugins/PythonScripts"
cp "$plugin" "$root/Resources/plugins/Vorlith/64/lin.xpl"
cp "$script" "$root/Resources/plugins/PythonScripts/VL_Fuzz.py"
export VORLITH_FUZZ_SEED=$seed PYTHONHASHSEED=0
# Python's own allocations may fail (a MemoryError is a valid answer); leaks are not
# this run's concern.
export ASAN_OPTIONS=${ASAN_OPTIONS:-detect_leaks=0:allocator_may_return_null=1:abort_on_error=0}
export UBSAN_OPTIONS=${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}
status=0
timeout 600 "$xpsim" --root "$root" --seconds "$seconds" >"$root/xpsim.out" 2>&1 || status=$?
scripts=$root/Resources/plugins/PythonScripts
head -n 1 "$scripts/VorlithOutput.txt" || true
if [ "$status" -ne 0 ]; then
  echo "xpsim ended with status $status; its output and the last calls:"
  tail -n 40 "$root/xpsim.out"
  tail -n 5 "$scripts/VorlithOutput.txt" || true
  exit 1
fi
if ! grep -q "^fuzz done: " "$scripts/VorlithOutput.txt" || ! grep -q -- "--- LOGGING STOPPED ---" "$scripts/VorlithLog.txt"; then
  echo "the run did not reach the script's stop"
  tail -n 5 "$scripts/VorlithOutput.txt" || true
  exit 1
fi
grep "^fuzz done: " "$scripts/VorlithOutput.txt"
