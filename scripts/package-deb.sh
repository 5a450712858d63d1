#!/usr/bin/env bash
# Builds the Debian package of TZRender (libraries, headers, CMake package,
# tzmap and tzmap-sampledata) into build-deb/packages/, with its dependencies
# computed from the binaries (dpkg-shlibdeps). The package is built in its
# own tree (build-deb/, prefix /usr, no tests or benchmarks), so the Debian
# library folder is used and the development tree's settings stay as they
# are; ccache serves the objects already compiled for build/.
#   bash scripts/package-deb.sh
#   sudo apt install ./build-deb/packages/tzrender_*.deb
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TZ_DEB_BUILD_DIR:-$root/build-deb}

bash "$root/scripts/install-deps.sh"
if [ ! -f "$build/build.ninja" ]; then
  cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_INSTALL_PREFIX=/usr -DTZ_BUILD_TESTS=OFF -DTZ_BUILD_BENCH=OFF
fi
TZ_BUILD_DIR=$build bash "$root/scripts/build.sh"
(cd "$build" && cpack -G DEB -B "$build/packages")
ls "$build"/packages/*.deb
