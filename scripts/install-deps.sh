#!/usr/bin/env bash
# Installs every Debian package the project needs to build, test, fuzz (clang
# and its libFuzzer runtime), benchmark, package (dpkg-dev and file for
# dpkg-shlibdeps) and run tzmap, with the PostgreSQL server and PostGIS that
# the data tests start for themselves. Does nothing when they are all present
# already.
set -euo pipefail

packages=(
  build-essential cmake ninja-build ccache pkg-config
  qtbase5-dev qttools5-dev qttools5-dev-tools libqt5charts5-dev libqt5svg5-dev
  libgdal-dev gdal-bin libgeos-dev sqlite3 libsqlite3-dev libbenchmark-dev
  xvfb xauth
  postgresql-15 postgresql-15-postgis-3 libpq-dev
  dpkg-dev file
  clang libclang-rt-dev
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
SUDO=""
[ "$(id -u)" -ne 0 ] && SUDO="sudo"
export DEBIAN_FRONTEND=noninteractive
$SUDO apt-get update -q
$SUDO apt-get install -y -q --no-install-recommends "${missing[@]}"
