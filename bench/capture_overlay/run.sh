#!/bin/bash
# The overlay's figures at 1080p and at 4K, in a private test desktop. Usage: run.sh [build folder]
set -e
root=$(cd "$(dirname "$0")/../.." && pwd)
bench=${1:-$root/build/release}/bench/bench_capture_overlay
for size in 1920x1080 3840x2160; do
    TD_SIZE=$size "$root/tests/desktop/test-desktop" run "$bench"
done
TD_SIZE=3840x2160 QT_SCALE_FACTOR=2 "$root/tests/desktop/test-desktop" run "$bench"
