#!/usr/bin/env bash
# Installs every system package the project needs. Idempotent: when all are
# present it only asks dpkg and returns at once.
set -euo pipefail

packages=(
  # build
  cmake ninja-build g++ clang-14 libclang-rt-14-dev pkg-config clang-format
  # core
  libicu-dev libpcre2-dev
  # tests and benchmarks, and the programs the benchmarks compare against
  libgtest-dev libgmock-dev libbenchmark-dev pcre2-utils ripgrep
  # desktop program
  qt6-base-dev qt6-base-dev-tools qt6-webengine-dev libgl-dev
  # headless runs of the desktop program, and the fonts its pages need
  xvfb xauth fonts-noto-cjk
  # the package and its checks: shared-library dependencies, the desktop
  # file, the AppStream data, the manual page, the icon drawn, the installed
  # viewer's window
  dpkg-dev desktop-file-utils appstream groff-base x11-utils librsvg2-bin
  # the tools written as scripts (the variant rows, the mutation runner)
  python3
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "setup: installing ${missing[*]}" >&2
sudo=""
[ "$(id -u)" -eq 0 ] || sudo="sudo"
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
