#!/usr/bin/env bash
# Times a sequence of 10-bit DPX files in HD through an effect with two jobs, against
#   copy     oiiotool reading and writing it
#   copy x2  the same by two at once, a half each: what reading and writing alone cost on
#            two processors
#   look     oiiotool reading it, applying the exported look and writing it
# and fails unless zelfx takes less than the look, and less than 1.2 times either copy.
#   tools/speed-test.sh [FRAMES [ROUNDS]]    default 200 and 3; the best round counts.
#                            ZELFX in the environment, default build/release/zelfx
set -euo pipefail
cd "$(dirname "$0")/.."

zelfx=$(realpath "${ZELFX:-build/release/zelfx}")
picture=$PWD/samples/coffee.png
frames=${1:-200}
rounds=${2:-3}
half=$((frames / 2))
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

mkdir in out
oiiotool "$picture" --ch R,G,B --resize 1920x1080 -d uint10 --attrib oiio:Endian big -o in/0001.dpx
for ((i = 2; i <= frames; i++)); do cp in/0001.dpx "in/$(printf %04d "$i").dpx"; done

setting=(color_balance -s midtones.red=-12 -s midtones.blue=30 -s highlights.red=3)
"$zelfx" export "${setting[@]}" -o look.spi1d >/dev/null
cat >config.ocio <<'CONFIG'
ocio_profile_version: 1
search_path: .
roles: {default: raw, scene_linear: raw}
displays:
  default:
    - !<View> {name: Raw, colorspace: raw}
colorspaces:
  - !<ColorSpace> {name: raw}
  - !<ColorSpace>
    name: graded
    from_reference: !<FileTransform> {src: look.spi1d, interpolation: linear}
CONFIG
export OCIO=$work/config.ocio

oiio() { oiiotool --frames "$1" in/%04d.dpx "${@:2}" -d uint10 -o out/%04d.dpx; }
run_copy() { oiio 1-"$frames"; }
run_copy_x2() { oiio 1-$half --threads 1 & oiio $((half + 1))-"$frames" --threads 1 && wait $!; }
run_look() { oiio 1-"$frames" --colorconvert raw graded; }
run_zelfx() { "$zelfx" render in out -e "${setting[@]}" --jobs 2 --quiet; }

declare -A best
TIMEFORMAT=%R
for ((round = 0; round < rounds; round++)); do
  for what in copy copy_x2 look zelfx; do
    rm -f out/*
    seconds=$({ time "run_$what" >&2; } 2>&1)
    [ "$(find out -name '*.dpx' | wc -l)" = "$frames" ] || { echo "$what failed: $seconds" >&2; exit 1; }
    [ -n "${best[$what]:-}" ] && [ "$(bc <<<"${best[$what]} <= $seconds")" = 1 ] ||
      best[$what]=$seconds
  done
done

over() { bc <<<"scale=2; ${best[zelfx]} / ${best[$1]}"; }
for what in copy copy_x2 look zelfx; do
  printf '%-8s %7.2f s %7.1f frames/s   zelfx: x %s\n' "${what/_/ }" "${best[$what]}" \
    "$(bc <<<"scale=3; $frames / ${best[$what]}")" "$(over $what)"
done
for limit in look:1 copy:1.2 copy_x2:1.2; do
  [ "$(bc <<<"$(over "${limit%:*}") < ${limit#*:}")" = 1 ] ||
    { echo "speed-test: zelfx is not below ${limit#*:} x ${limit%:*}" >&2; exit 1; }
done
