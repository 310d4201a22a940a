#!/usr/bin/env bash
# Installs what building, running and testing need on a Debian 12 machine (run as root).
set -euo pipefail

packages=(
  build-essential cmake pkg-config clang-format python3
  libjsoncpp-dev libgtest-dev libgmock-dev googletest libbenchmark-dev libcurl4-openssl-dev libssl-dev
  qt6-base-dev qt6-webengine-dev qt6-webchannel-dev
  libmupdf-dev libharfbuzz-dev libfreetype-dev libjbig2dec0-dev libopenjp2-7-dev libjpeg-dev
  zlib1g-dev libgumbo-dev libicu-dev libtesseract-dev libleptonica-dev libmujs-dev tesseract-ocr-eng
  poppler-utils clang libclang-rt-14-dev
  slurm-wlm munge
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
# The reference page and its tests need Node.js and npm; newer ones already on the machine are kept.
command -v node >/dev/null 2>&1 || missing+=(nodejs)
command -v npm >/dev/null 2>&1 || missing+=(npm)
if [ ${#missing[@]} -gt 0 ]; then
  export DEBIAN_FRONTEND=noninteractive
  # One broken index (the i386 lists the Windows tests try to add, a mirror mid-sync) must not
  # stop the others: a package that is really missing still fails the install below.
  apt-get update -q || echo "apt-get update reported errors; installing from the lists it has"
  apt-get install -y -q --no-install-recommends "${missing[@]}"
fi

# The page's libraries (phone numbers, people's names), exactly as web/package-lock.json pins
# them; the page loads their browser builds from web/node_modules.
web=$(cd "$(dirname "$0")/../web" && pwd)
npm ci --prefix "$web" --no-audit --no-fund --loglevel=error
