#!/usr/bin/env bash
# Installs the Debian packages Quorbit needs that are not installed yet.
# Usage: scripts/deps.sh [play|test|ci]
set -euo pipefail

build=(build-essential cmake ninja-build pkg-config
       libsdl2-dev libsdl2-image-dev libsdl2-ttf-dev libsdl2-mixer-dev
       libepoxy-dev libassimp-dev libvorbis-dev libogg-dev libfontconfig-dev
       fonts-liberation fonts-dejavu-core libgl1-mesa-dri)
tests=(libgtest-dev libgmock-dev libbenchmark-dev xvfb xauth xfonts-base xdotool imagemagick x11-utils mesa-utils tesseract-ocr)
ci=(clang libclang-rt-14-dev clang-format)

want=("${build[@]}")
case "${1:-play}" in
  play) ;;
  test) want+=("${tests[@]}") ;;
  ci) want+=("${tests[@]}" "${ci[@]}") ;;
  *) echo "usage: $0 [play|test|ci]" >&2; exit 2 ;;
esac

missing=()
for p in "${want[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
