#!/usr/bin/env bash
# Installs what is missing, builds, writes the sample data (once) and opens
# tzmap on it. Without a display it draws the window under Xvfb (or Qt's
# offscreen platform) into docs/tzmap.png and exits.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${TZ_BUILD_DIR:-$root/build}
data=$root/sample-data

bash "$root/scripts/install-deps.sh"
bash "$root/scripts/build.sh" tzmap tzmap-sampledata

if [ ! -f "$data/sample.tzmap" ] || [ ! -f "$data/sample.gpkg" ]; then
  "$build/bin/tzmap-sampledata" "$data"
fi

# The sample project opens every sample layer with its symbology.
args=("$data/sample.tzmap" --select regions)

if [ -n "${DISPLAY:-}" ]; then
  exec "$build/bin/tzmap" "${args[@]}" "$@"
fi

snapshot=$root/docs/tzmap.png
mkdir -p "$root/docs"
if command -v xvfb-run >/dev/null 2>&1; then
  xvfb-run -a -s "-screen 0 1400x900x24" "$build/bin/tzmap" --snapshot "$snapshot" "${args[@]}" "$@"
else
  QT_QPA_PLATFORM=offscreen "$build/bin/tzmap" --snapshot "$snapshot" "${args[@]}" "$@"
fi
echo "No display: the window was drawn into $snapshot"
