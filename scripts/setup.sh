#!/usr/bin/env bash
# Installs the Debian packages the project builds with. Safe to run again:
# it installs only what is missing. --fuzz adds clang and its libFuzzer
# runtime, which only scripts/fuzz.sh needs.
set -euo pipefail
packages=(
  cmake ninja-build g++ pkg-config python3
  libgdal-dev gdal-bin libgeos-dev libproj-dev proj-data
  libpugixml-dev libcli11-dev libfmt-dev libsqlite3-dev
  libgtest-dev libgmock-dev
  qgis libqgis-dev qtbase5-dev xvfb xauth poppler-utils
)
if [[ "${1:-}" == "--fuzz" ]]; then packages+=(clang-14 libclang-rt-14-dev); fi
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO=sudo
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
