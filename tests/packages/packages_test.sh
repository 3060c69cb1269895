#!/usr/bin/env bash
# Makes the Debian packages of a build, unpacks them into a root of their own and uses what is in them:
# packages_test.sh BUILD-FOLDER VERSION
set -euo pipefail
build=$1 version=$2
here=$(mktemp -d)
trap 'rm -rf "$here"' EXIT
fail() { echo "packages_test: $*" >&2; exit 1; }
expect() { [ "$2" = "$3" ] || fail "$1: expected '$3', not '$2'"; }

(cd "$build" && cpack -B "$here/packages") >"$here/log" || { cat "$here/log"; fail "cpack failed"; }
program=$here/packages/dossierkit_${version}_$(dpkg --print-architecture).deb
library=$here/packages/libdossierkit-dev_${version}_$(dpkg --print-architecture).deb
expect "the version of the program" "$(dpkg-deb -f "$program" Version)" "$version"
expect "what the library asks for" "$(dpkg-deb -f "$library" Depends)" \
  "dossierkit (= $version), libsqlite3-dev, qt6-base-dev, unixodbc-dev"
[[ $(dpkg-deb -f "$program" Depends) == *libqt6widgets6* ]] || fail "the program does not ask for Qt"
lintian --fail-on error --tag-display-limit 0 "$program" "$library" >"$here/log" 2>&1 || { cat "$here/log"; fail "lintian"; }

root=$here/root
dpkg-deb -x "$program" "$root"
desktop-file-validate "$root"/usr/share/applications/*.desktop
appstreamcli validate --no-net "$root"/usr/share/metainfo/*.xml >"$here/log" || { cat "$here/log"; fail "AppStream"; }
# Into files, since a pipe fails where grep has found its word before the whole page was written.
mkdir "$here/man"
for page in man1 zh_CN/man1; do
  zcat "$root/usr/share/man/$page/dossier.1.gz" | tr -d '\\' >"$here/man/${page//\//.}"
done
for page in "$here"/man/*; do
  grep -q '^\.SH' "$page" || fail "$page is no man page"
done

# Every option and command that the program knows is in both man pages and in the completion.
dossier=$root/usr/bin/dossier
words=$("$dossier" --help | grep -oE '^  +(--)?[a-z][a-z-]+|dossier [a-z]+(-[a-z]+)? ' | sed 's/^ *//; s/^dossier //; s/ *$//' | sort -u)
for word in $words; do
  case "$word" in --* | create-* | check | copy | history | restore) ;; *) continue ;; esac
  for page in "$here"/man/*; do
    grep -q -e "$word" "$page" || fail "the page ${page##*/} lacks $word"
  done
  grep -q -e "$word" "$root/usr/share/bash-completion/completions/dossier" || fail "the completion lacks $word"
done

export HOME=$here/home XDG_DATA_HOME=$here/home/data
mkdir -p "$HOME"
expect "the program's version" "$("$dossier" --version)" "dossier $version"
"$dossier" create-sample "$here/sample.db"
expect "what is wrong in the sample" "$("$dossier" check --database "$here/sample.db")" ""
"$dossier" --tour "$here/tour" >"$here/log" 2>&1 || { cat "$here/log"; fail "the tour failed"; }
expect "the tour's pictures" "$(find "$here/tour" -maxdepth 1 -name '*.png' | wc -l)" 32

# Hosts find headers and libraries where the package puts them.
dpkg-deb -x "$library" "$root"
for file in include/dossierkit/dossierkit.h lib/cmake/DossierKit/DossierKitConfig.cmake lib/pkgconfig/dossierkit.pc; do
  [ -s "$root/usr/$file" ] || fail "libdossierkit-dev lacks $file"
done
"$(dirname "$0")/../embedding/links.py" "$root/usr/share/doc/dossierkit" README.md README.zh-CN.md docs/database.md \
  docs/database.zh-CN.md data/schema.sql examples/console/main.cpp || fail "documents are missing"
echo "1 passed, 0 failed"
