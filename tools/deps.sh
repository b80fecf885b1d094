#!/usr/bin/env bash
# Installs the Debian packages the build, the demo and the tests need (Debian 12).
set -euo pipefail
packages=(build-essential cmake ccache python3-dev libiniparser-dev
          libgtest-dev libgmock-dev libbenchmark-dev
          libegl-dev libgl-dev libgl1-mesa-dri libfreetype-dev fonts-dejavu-core libpng-dev)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
fi
