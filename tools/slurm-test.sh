#!/usr/bin/env bash
# Runs the job script and the commands of docs/farm.md as an array of ten tasks on a Slurm
# cluster of this machine alone, and compares the frames with those of one local run.
#   tools/slurm-test.sh      needs root, and tools/install-packages.sh farm;
#                            ZELFX in the environment, default build/release/zelfx
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD

zelfx=$(realpath "${ZELFX:-build/release/zelfx}")
PATH=$(dirname "$zelfx"):$PATH
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

# The bash blocks under a heading: the first is the job script, the second the commands.
block() {
  awk -v wanted="$1" '
    /^## /      { inside = $0 == "## Slurm" }
    /^```$/     { on = 0 }
    on          { print }
    /^```bash$/ { if (inside) on = ++count == wanted }' "$root/docs/farm.md"
}
# A hundred small frames in ten chunks, two at a time.
block 1 | sed 's/^#SBATCH --array=.*/#SBATCH --array=1-100:10%2/' >grade.sbatch
block 2 >commands.sh
grep -q 1-100:10%2 grade.sbatch && grep -q sbatch commands.sh ||
  { echo "slurm-test: docs/farm.md lacks the job script or its commands" >&2; exit 1; }

mkdir in local
ffmpeg -v error -f lavfi -i "testsrc2=s=480x270:r=1,noise=alls=40:allf=t" -frames:v 100 \
  -pix_fmt gbrp10be in/shot.%04d.dpx
zelfx curve color_balance -s midtones.red=-12 -s midtones.blue=30 --save-preset look.json \
  -o look.svg >/dev/null

begin=$(date +%s.%N)
zelfx render in/shot.####.dpx local/ --preset look.json --quiet
between=$(date +%s.%N)
"$root/tools/slurm-node.sh" bash -euo pipefail commands.sh
end=$(date +%s.%N)

tasks=$(find logs -name '*.out' | wc -l)
[ "$tasks" = 10 ] || { echo "slurm-test: $tasks tasks ran, not 10" >&2; exit 1; }
rendered=$(cat logs/*.jsonl | grep -c '"status":"done"')
[ "$rendered" = 100 ] || { echo "slurm-test: the tasks rendered $rendered frames" >&2; exit 1; }
(cd local && sha256sum -- *.dpx) >local.sums
(cd graded && sha256sum -- *.dpx) | cmp - local.sums
echo "ten tasks, $rendered frames: the same checksums as one local run" \
  "(local $(bc <<<"scale=1; ($between - $begin) / 1") s," \
  "cluster from its start to its end $(bc <<<"scale=1; ($end - $between) / 1") s)"
