#!/bin/sh
# The desktop entry and the AppStream metadata pass their validators, the
# Debian package passes lintian, and it puts every file where a desktop looks
# for it.
# Usage: package_files.sh SOURCE_DIR BUILD_DIR
set -u
source_dir=$1
build_dir=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() { echo "FAIL: $*"; exit 1; }
for tool in desktop-file-validate appstreamcli dpkg-deb cpack; do
  command -v "$tool" >/dev/null || { echo "no $tool"; exit 77; }
done

desktop-file-validate "$source_dir/data/org.quillion.Quillion.desktop" || fail "desktop entry"
appstreamcli validate --no-net "$source_dir/data/org.quillion.Quillion.metainfo.xml" >"$work/as" 2>&1 ||
  fail "AppStream metadata: $(cat "$work/as")"

(cd "$work" && cpack -G DEB --config "$build_dir/CPackConfig.cmake" >"$work/cpack.log" 2>&1) ||
  fail "cpack: $(cat "$work/cpack.log")"
deb=$(ls "$work"/quillion_*.deb 2>/dev/null | head -1)
[ -n "$deb" ] || fail "no package: $(cat "$work/cpack.log")"
dpkg-deb -x "$deb" "$work/root" || fail "dpkg-deb -x"
root="$work/root/usr"
[ -x "$root/bin/quillion" ] || fail "no program in /usr/bin"
[ -f "$root/share/man/man1/quillion.1.gz" ] || fail "no manual page"
bash -c ". '$root/share/bash-completion/completions/quillion' && COMP_WORDS=(quillion --pr) COMP_CWORD=1 &&
  _quillion && [ \"\${COMPREPLY[*]}\" = '--print --printer' ]" || fail "bash completion"
[ -f "$root/share/metainfo/org.quillion.Quillion.metainfo.xml" ] || fail "no AppStream metadata"
desktop-file-validate "$root/share/applications/org.quillion.Quillion.desktop" || fail "installed desktop entry"
grep -q '^Icon=org.quillion.Quillion$' "$root/share/applications/org.quillion.Quillion.desktop" || fail "icon name"
[ -f "$root/share/icons/hicolor/scalable/apps/org.quillion.Quillion.svg" ] || fail "no scalable icon"
for size in 16 24 32 48 64 128 256; do
  icon="$root/share/icons/hicolor/${size}x$size/apps/org.quillion.Quillion.png"
  [ "$(od -An -tx1 -j16 -N8 "$icon" | tr -d ' \n')" = "$(printf '%08x%08x' "$size" "$size")" ] ||
    fail "icon $icon is not $size by $size"
done
depends=$(dpkg-deb -f "$deb" Depends)
for needed in fonts-liberation2 libqt6widgets6 libcups2; do
  echo "$depends" | grep -q "$needed" || fail "Depends lacks $needed: $depends"
done
if command -v lintian >/dev/null; then
  lintian --fail-on error,warning "$deb" >"$work/lintian" 2>&1 ||
    fail "lintian: $(cat "$work/lintian")"
fi
echo "ok: validators and lintian pass; the package installs the program, entry, icons, metadata, manual page and completion"
