#!/usr/bin/env bash
# Installs the build into throw-away simulator folders and checks what a user gets: the
# refusal without a prefix, the layout, the example ini, a user's files kept, a plug-in
# that needs nothing at run time but its Python, and xpsim running the installed copy.
# Usage: check_install.sh BUILD_DIR XPSIM
set -euo pipefail
build=$1 xpsim=$2
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
fail() { echo "FAIL: $*" >&2; exit 1; }

# Without a prefix (DESTDIR keeps a broken guard from writing into the real /usr/local).
if grep -q '^VORLITH_UNSET_PREFIX:INTERNAL=' "$build/CMakeCache.txt"; then
  if DESTDIR="$tmp/refused" cmake --install "$build" >"$tmp/refused.log" 2>&1; then
    fail "install without --prefix went ahead"
  fi
  grep -q -- "--prefix" "$tmp/refused.log" || fail "the refusal does not name --prefix"
  [ ! -e "$tmp/refused" ] || fail "the refused install wrote files"
fi

# Into a fresh folder.
fresh="$tmp/fresh"
cmake --install "$build" --prefix "$fresh" >/dev/null
plugin="$fresh/Resources/plugins/Vorlith/64/lin.xpl"
[ -f "$plugin" ] || fail "no $plugin"
[ -d "$fresh/Resources/plugins/PythonScripts" ] || fail "no scripts folder"
[ -z "$(ls -A "$fresh/Resources/plugins/PythonScripts")" ] || fail "the scripts folder is not empty"
ini="$fresh/Resources/plugins/Vorlith/Vorlith.ini"
grep -q 'DebugCallbacks' "$ini" || fail "the example ini lacks its keys"
[ -f "$fresh/Resources/plugins/Vorlith/stubs/XPLMDataAccess.pyi" ] || fail "no stubs beside the plug-in"
if grep -Eq '^[[:space:]]*[A-Za-z]+[[:space:]]*=' "$ini"; then fail "a key of the example ini is switched on"; fi

# Dynamic needs: the C and C++ run-times, OpenGL and the Python it was built for.
needed=$(readelf -d "$plugin" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p')
[ -n "$needed" ] || fail "readelf found no NEEDED entries"
for lib in $needed; do
  case "$lib" in
    libpython*|libc.so*|libm.so*|libstdc++.so*|libgcc_s.so*|libdl.so*|libpthread.so*|libGL.so*|ld-linux*) ;;
    *) fail "lin.xpl needs $lib at run time" ;;
  esac
done
echo "$needed" | grep -q '^libpython' || fail "lin.xpl does not name its Python library"
if ldd "$plugin" | grep -q 'not found'; then fail "ldd: $(ldd "$plugin" | grep 'not found')"; fi

# Over a simulator a user already has: scripts and ini kept.
mine="$tmp/mine/Resources/plugins"
mkdir -p "$mine/PythonScripts" "$mine/Vorlith"
cat >"$mine/PythonScripts/VL_Mine.py" <<'PY'
class Vorlith:
    def XPluginStart(self):
        print("mine")
        return "Mine", "xpsim.test.mine", "A user's script"
PY
printf '[DEBUG]\nCheckCallbacks = 1\n' >"$mine/Vorlith/Vorlith.ini"
cmake --install "$build" --prefix "$tmp/mine" >/dev/null
grep -q 'print("mine")' "$mine/PythonScripts/VL_Mine.py" || fail "a user's script was changed"
grep -q '^CheckCallbacks = 1' "$mine/Vorlith/Vorlith.ini" || fail "a user's ini was replaced"

# The installed plug-in runs the user's script.
"$xpsim" --root "$tmp/mine" --frames 2 >/dev/null
grep -q '^mine$' "$mine/PythonScripts/VorlithOutput.txt" || fail "the installed plug-in did not run VL_Mine.py"
echo "install layout: all checks passed"
