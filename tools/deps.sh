#!/usr/bin/env bash
# Installs the Debian packages the build, the demo and the tests need (Debian 12).
set -euo pipefail
packages=(build-essential cmake ccache python3-dev libiniparser-dev
          libgtest-dev libgmock-dev libbenchmark-dev
          libegl-dev libgl-dev libgl1-mesa-dri libfreetype-dev fonts-dejavu-core libpng-dev
          mypy)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0
sudo=""
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null 2>&1; then
    echo "tools/deps.sh: missing Debian packages; as root run: apt-get install ${missing[*]}" >&2
    exit 1
  fi
  sudo="sudo"
fi
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
