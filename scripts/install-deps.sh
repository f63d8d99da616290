#!/usr/bin/env bash
# Installs the Debian packages a task needs. Safe to run again: it installs only what is missing.
#   install-deps.sh run      building the window and the CLI, and running the window
#   install-deps.sh package  the same, plus what `make package` needs for the .deb
#   install-deps.sh clang    everything, plus Clang
#   install-deps.sh [all]    everything: the tests, the benchmarks, the package and its checks
set -euo pipefail

group=${1:-all}

run=(
  g++ cmake make pkg-config
  qt6-base-dev qt6-svg-dev libgl-dev qt6-qpa-plugins fonts-dejavu-core
  libcli11-dev
  libqscintilla2-qt6-dev
)
# CPack's DEB generator: dpkg-shlibdeps finds the Depends, `file` tells it the executables.
package=(dpkg-dev file)
rest=(
  libgtest-dev libgmock-dev googletest
  libbenchmark-dev
  # The window under a virtual display, driven as a user and a screen reader would.
  xvfb xauth xdotool x11-utils dbus at-spi2-core python3 python3-pyatspi
  # Exports read back by independent readers: DXF with ezdxf, PDF pages as pictures.
  python3-ezdxf poppler-utils
  # The window's memory and event-loop gaps for the speed table (scripts/window-memory.py).
  strace procps
  # The installed menu entry, metadata, file types and manual pages, checked as a desktop
  # and man read them.
  desktop-file-utils appstream shared-mime-info libglib2.0-bin man-db
)

case $group in
  run) packages=("${run[@]}") ;;
  package) packages=("${run[@]}" "${package[@]}") ;;
  all) packages=("${run[@]}" "${package[@]}" "${rest[@]}") ;;
  clang) packages=("${run[@]}" "${package[@]}" "${rest[@]}" clang) ;;
  *) echo "install-deps.sh: unknown group '$group' (run, package, clang or all)" >&2; exit 2 ;;
esac

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
