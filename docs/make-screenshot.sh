#!/usr/bin/env bash
# Makes docs/workbench.png, the picture in the README: the workbench on the sample, under a display of its own.
# The program must have been built: ./run, or the path of another build as the first argument.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
install_packages $SCREEN_PACKAGES
tavin=$(realpath "${1:-build/run/bin/tavin}")
scratch=$(mktemp -d)
trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$scratch"' EXIT

# The server chooses a free display and says which.
Xvfb -displayfd 3 -screen 0 1180x720x24 -nolisten tcp 3>"$scratch/display" >/dev/null 2>&1 &
for _ in $(seq 100); do [ -s "$scratch/display" ] && break; sleep 0.05; done
export DISPLAY=:$(cat "$scratch/display")
export XDG_RUNTIME_DIR=$scratch TAVIN_REGISTRY=$scratch/settings.db
sleep 0.5
openbox >/dev/null 2>&1 &
sleep 1
"$tavin" samples/tide-gauge.csv &
window=$(xdotool search --sync --onlyvisible --name tide-gauge | tail -n 1)
xdotool windowmove "$window" 2 22 windowsize "$window" 1174 692
sleep 1
# Zoom in on the days when the gauge was knocked, then stay over a peak.
xdotool mousemove 420 150
sleep 1
xdotool key z
sleep 0.5
for step in "mousemove 420 150" "mousedown 1" "mousemove 600 400" "mousemove 960 600" "mouseup 1"; do
    xdotool $step
    sleep 0.2
done
xdotool key z mousemove 640 330
sleep 1
import -window root docs/workbench.png
