#!/usr/bin/env bash
# Builds the Debian package, looks at what is in it, installs it on a bare Debian 12 in a
# folder and runs it there as an ordinary user. Needs debootstrap, and root for the folder.
#   tools/check-package.sh [CACHE]     folder to keep the bare system in (default: /var/tmp)
set -euo pipefail
cd "$(dirname "$0")/.."

cache=${1:-/var/tmp}
bare=$cache/zelfx-bare-bookworm.tar
package=build/package/package/zelfx_0.1.0_$(dpkg --print-architecture).deb
log=$(mktemp)
room=$(mktemp -d "$cache/zelfx-check-XXXXXX")

leave() {
  mountpoint -q "$room/system/proc" && umount "$room/system/proc"
  rm -rf --one-file-system "$room" "$log"
}
trap leave EXIT

fail() { echo "check-package: $*" >&2; exit 1; }
quietly() { "$@" >"$log" 2>&1 || { cat "$log" >&2; fail "failed: $*"; }; }

# --- building ---------------------------------------------------------------------

echo "build: build/package"
quietly cmake --preset package
quietly cmake --build --preset package
rm -f build/package/package/*.deb
quietly cpack --preset package
[ -f "$package" ] || fail "no $package"

# --- what is in it ----------------------------------------------------------------

echo "contents: $package"
dpkg-deb -x "$package" "$room/tree"
dpkg-deb -e "$package" "$room/control"

for file in bin/zelfx lib/zelfx/modules/zel_color_balance.so \
            lib/zelfx/modules/zel_brightness_contrast_pivot.so \
            lib/zelfx/modules/zel_gamma_gain_offset.so \
            lib/zelfx/modules/zel_log_linear_conversion.so \
            share/man/man1/zelfx.1.gz share/bash-completion/completions/zelfx \
            share/zsh/vendor-completions/_zelfx share/doc/zelfx/docs/guide.md; do
  [ -f "$room/tree/usr/$file" ] || fail "it has no /usr/$file"
done
[ "$(ls "$room/tree")" = usr ] || fail "it has files outside of /usr"
[ -z "$(find "$room/tree" -type d ! -perm 755)" ] || fail "it has folders that are not 755"
[ -z "$(find "$room/tree" -type f ! -perm 644 ! -path '*/bin/*')" ] ||
  fail "it has files that are not 644"
[ -z "$(find "$room/tree" -newermt tomorrow)" ] || fail "it has files from the future"
grep -rlF "$PWD" "$room/tree" && fail "it names the folder that it was built in"
for elf in "$room"/tree/usr/bin/zelfx "$room"/tree/usr/lib/zelfx/modules/*.so; do
  readelf -d "$elf" | grep -qE 'R(UN)?PATH' && fail "$elf has a library path of its own"
  readelf -S "$elf" | grep -q '\.symtab' && fail "$elf is not stripped"
done
for field in Package Version Architecture Maintainer Depends Description Section; do
  grep -q "^$field: ." "$room/control/control" || fail "its control file has no $field"
done
(cd "$room/tree" && md5sum --quiet -c ../control/md5sums) || fail "its checksums are wrong"

# --- on a bare machine ------------------------------------------------------------

if [ ! -f "$bare" ]; then
  echo "bare system: $bare"
  quietly debootstrap --variant=minbase --make-tarball="$bare" bookworm "$room/download"
fi
echo "install: on a bare system, without what is only recommended"
quietly debootstrap --variant=minbase --unpack-tarball="$bare" bookworm "$room/system"
mount -t proc proc "$room/system/proc"
cp "$package" "$room/system/zelfx.deb"
inside() { chroot "$room/system" env -i PATH=/usr/sbin:/usr/bin LC_ALL=C.UTF-8 "$@"; }
quietly inside sh -c 'apt-get update -qq && DEBIAN_FRONTEND=noninteractive \
  apt-get install -y -qq --no-install-recommends /zelfx.deb'

echo "run: as an ordinary user, anywhere"
inside useradd -m grader
cat >"$room/system/try.sh" <<'TRY'
set -eu
cd
photo=/usr/share/doc/zelfx/samples/coffee.png
test "$(zelfx list --names | wc -l)" = 4
zelfx render "$photo" out.dpx -e color_balance -s midtones.blue=30 --save-preset look.json
zelfx render "$photo" again.png -p look.json
zelfx export look.json -o look.cube
zelfx curve look.json -o look.png
zelfx scope again.png -o scope.png
zelfx compare again.png again.png
# Without ffmpeg, which is only recommended, videos are refused in words.
cp "$photo" no.mp4
status=0
zelfx render no.mp4 out.mov -e color_balance 2>said || status=$?
test $status = 1
grep -q "ffprobe.*not installed" said
test ! -e out.mov
test "$(zelfx info --json | grep -c '"/usr/lib/zelfx/modules"')" = 1
zcat /usr/share/man/man1/zelfx.1.gz | grep -q '^\.TH ZELFX 1'
bash -c 'source /usr/share/bash-completion/completions/zelfx; complete -p zelfx' >/dev/null
TRY
quietly inside su grader -c 'sh /try.sh'
cp "$room/system/home/grader/again.png" "$room/again.png"
build/package/zelfx render samples/coffee.png "$room/here.png" -e color_balance \
  -s midtones.blue=30 --quiet
cmp "$room/here.png" "$room/again.png" || fail "the picture differs from one rendered here"

echo "remove"
quietly inside apt-get purge -y -qq zelfx
[ -z "$(inside find / -xdev -path /proc -prune -o -name '*zelfx*' ! -name zelfx.deb -print |
        grep -v ^/var/)" ] || fail "it leaves files behind"
echo "check-package: good: $(du -h "$package" | cut -f1) $package"
