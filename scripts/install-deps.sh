#!/usr/bin/env bash
# Installs the Debian packages the build, the tests and the benchmarks need.
# Safe to run again: it installs only what is missing.
set -euo pipefail

packages=(
  g++ cmake make pkg-config
  qt6-base-dev qt6-svg-dev libgl-dev qt6-qpa-plugins fonts-dejavu-core
  libcli11-dev
  libqscintilla2-qt6-dev
  libgtest-dev libgmock-dev googletest
  libbenchmark-dev
  # The window under a virtual display, driven as a user and a screen reader would.
  xvfb xauth xdotool x11-utils dbus at-spi2-core python3 python3-pyatspi
  # Exports read back by independent readers: DXF with ezdxf, PDF pages as pictures.
  python3-ezdxf poppler-utils
  # The window's memory and event-loop gaps for the speed table (scripts/window-memory.py).
  strace procps
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

sudo=""
if [ "$(id -u)" -ne 0 ]; then
  sudo="sudo"
fi

echo "Installing: ${missing[*]}"
$sudo apt-get update -qq
DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y --no-install-recommends "${missing[@]}"
