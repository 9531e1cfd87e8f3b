#!/usr/bin/env bash
# Draws the curves of docs/operations.md, one per tone operation, into docs/pictures/.
#   tools/plots.sh [ZELFX]         default: build/release/zelfx
set -euo pipefail
zelfx=$(realpath "${1:-$(dirname "$0")/../build/release/zelfx}")
cd "$(dirname "$0")/../docs/pictures"

draw() { local name=$1; shift; "$zelfx" curve "$@" -o "curve-$name.png"; }

draw balance     ApplyBalance    -s 0=320 -s 1=255 -s 2=190
draw balance2    color_balance   -s master.red=-15 -s highlights.red=70 -s midtones.green=25 -s shadows.blue=-80
draw brightness  ApplyBrightness -s 0=2000 -s 1=3000
draw brightness2 brightness_contrast_pivot \
  -s highlights.contrast=60 -s highlights.contrast_pivot=1 -s midtones.red_channel.red_brightness=30 \
  -s shadows.blue_channel.blue_brightness=-20
draw gamma       ApplyGamma      -s 0=4.5
draw gamma2      gamma_gain_offset \
  -s master.gamma=1.2 -s master.offset=-10 -s highlights.red_channel.gain=1.5 -s shadows.blue_channel.offset=12
draw log-to-linear log_linear_conversion --log-to-linear -s "blue_channel.blue - film_gamma=0.75"
draw linear-to-log log_linear_conversion --linear-to-log
draw invert      ApplyInvert     -s 0=1 -s 1=25
draw arithmetic  ApplyArithmetic -s 0=8 -s 1=51 -s 2=102 -s 3=153
