#!/usr/bin/env bash
# Kills a run at random times, again and again, and looks at what it leaves: no part of a
# file under a final name, no finished frame lost, and a rerun that completes to the same
# checksums as a run that nobody disturbed.
#   tools/kill-test.sh [KILLS]     default 50; needs ffmpeg; ZELFX, SEED in the environment
set -euo pipefail
cd "$(dirname "$0")/.."

zelfx=$(realpath "${ZELFX:-build/release/zelfx}")
kills=${1:-50}
seed=${SEED:-$RANDOM}
RANDOM=$seed
frames=400
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir in whole out

# Pictures that differ, with names of four digits.
ffmpeg -v error -f lavfi -i "testsrc2=s=960x540:r=1,noise=alls=40:allf=t" -frames:v $frames \
  -pix_fmt gbrp10be in/shot.%04d.dpx
look=(-e color_balance -s midtones.red=-12 -s midtones.blue=30)

fail() { echo "kill-test: $* (seed $seed)" >&2; exit 1; }
sums() { (cd "$1" && sha256sum -- *.dpx 2>/dev/null || true); }

"$zelfx" render in whole "${look[@]}" --jobs 2 --quiet
sums whole >whole.sums

finished=0 written=0 cut_off=0 runs_over=0
for ((kill = 1; kill <= kills; kill++)); do
  touch started
  "$zelfx" render in out "${look[@]}" --jobs 2 --quiet --skip-existing &
  pid=$!
  # From its first file on; starting a program takes longest on a busy machine. Files get
  # their names, or go, while they are looked for.
  while [ "$(find out -type f -newer started 2>/dev/null | wc -l)" = 0 ] &&
    kill -0 $pid 2>/dev/null; do
    sleep 0.01
  done
  sleep "0.$(printf %03d $((RANDOM % 500)))"
  kill -9 $pid 2>/dev/null || true
  wait $pid 2>/dev/null && runs_over=$((runs_over + 1))
  # Every final name holds what the undisturbed run wrote.
  sums out >out.sums
  [ -z "$(grep -vxFf whole.sums out.sums || true)" ] || fail "a file differs after kill $kill"
  now=$(wc -l <out.sums)
  [ "$now" -ge "$finished" ] || fail "finished frames were lost at kill $kill"
  written=$((written + now - finished))
  finished=$now
  cut_off=$((cut_off + $(find out -name '.zelfx-*' | wc -l)))
  # Begin again when little is left to be killed.
  if [ "$finished" -gt $((frames * 3 / 4)) ]; then rm out/*.dpx; finished=0; fi
done

"$zelfx" render in out "${look[@]}" --jobs 2 --quiet --skip-existing || fail "the rerun ended badly"
sums out | cmp - whole.sums || fail "the rerun differs"
[ -z "$(find out -name '.*' -type f)" ] || fail "temporary files are left"
[ "$cut_off" -gt 0 ] || fail "no kill hit a file that was being written: nothing was tested"
echo "$kills kills ($runs_over came too late), $written frames finished between them," \
  "$cut_off files cut off under temporary names, none under a final one;" \
  "the rerun equals an undisturbed run (seed $seed)"
