#!/usr/bin/env bash
# Regenerates the PNG icons from their SVG sources in src/. Run it after
# editing a source; the PNGs are committed so the build needs no converter.
set -euo pipefail
here=$(cd "$(dirname "$0")" && pwd)
tool=$(mktemp -d)/svg2png
trap 'rm -rf "$(dirname "$tool")"' EXIT
g++ -std=c++17 -fPIC "$here/svg2png.cpp" -o "$tool" $(pkg-config --cflags --libs Qt5Svg Qt5Gui)

render() { QT_QPA_PLATFORM=offscreen "$tool" "$here/src/$1.svg" "$here/$2/$1.png"; }

mkdir -p "$here/symbolrender" "$here/themes/default" "$here/Resources"
for icon in addvalue addallvalue deletevalue deleteallvalue; do render $icon symbolrender; done
for icon in Up Down select; do render $icon themes/default; done
for icon in Rotate geographic Arithmetic; do render $icon Resources; done
