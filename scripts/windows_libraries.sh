#!/usr/bin/env bash
# Makes SQLite and GoogleTest for Windows, from the sources of the machine's own packages, and tells where they lie.
#
#   windows_libraries.sh TARGET FOLDER [FLAG...]
#
# TARGET is x86_64-w64-mingw32 or i686-w64-mingw32, FLAG what everything of that target is compiled with. Each
# combination of versions, flags and of this script has a folder of its own below FOLDER, so that none is ever stale.
set -euo pipefail
target=$1
folder=$2
shift 2
flags=("$@")
compiler=$target-g++-posix

version_of() { dpkg-query -W -f='${source:Version}' "$1"; }
sqlite=$(version_of libsqlite3-dev)
key=$({
  echo "$target $sqlite $(version_of googletest) ${flags[*]-}"
  "$compiler" --version
  cat "$0"
} | sha256sum | cut -c 1-16)
prefix=$folder/$target-$key
if [ -f "$prefix/complete" ]; then
  echo "$prefix"
  exit 0
fi

mkdir -p "$folder"
work=$(mktemp -d "$folder/making.XXXXXX")
trap 'rm -rf "$work"' EXIT
exec 3>&1 4>&2 >"$work/log" 2>&1
fail() {
  tail -n 20 "$work/log" >&4
  echo "windows_libraries: $*" >&4
  exit 1
}

# The source of the packages that the machine is installed from, by apt with lists of its own: those of the
# machine need not name sources, and nothing of them is changed.
fetch_sqlite() {
  apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT)' \
    'Created-By: Packages' 'Origin: Debian' | sort -u >"$work/sources.list"
  [ -s "$work/sources.list" ] || { echo "apt knows no archive of Debian"; return 1; }
  mkdir -p "$work/lists/partial" "$work/cache/archives/partial"
  local own=(-o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=/nonexistent
    -o "Dir::State::Lists=$work/lists" -o "Dir::Cache=$work/cache" -o APT::Sandbox::User="$(id -un)"
    -o Acquire::Languages=none)
  apt-get "${own[@]}" update && cd "$work" || return 1
  # An archive keeps the newest version alone, which a machine that was not upgraded lately does not have.
  apt-get "${own[@]}" source --only-source "sqlite3=$sqlite" || apt-get "${own[@]}" source --only-source sqlite3
}
(fetch_sqlite) || fail "the source of SQLite could not be fetched"

mkdir -p "$work/prefix/lib" "$work/prefix/include" "$work/sqlite"
(
  cd "$work/sqlite"
  "$work"/sqlite3-*/configure --disable-readline
  make sqlite3.c
) || fail "SQLite could not be configured"
"$target-gcc-posix" -O2 "${flags[@]}" -c "$work/sqlite/sqlite3.c" -o "$work/sqlite3.o" || fail "SQLite failed"
"$target-ar" rcs "$work/prefix/lib/libsqlite3.a" "$work/sqlite3.o"
cp "$work/sqlite/sqlite3.h" "$work/prefix/include"

cp -r /usr/src/googletest/googletest/include/gtest "$work/prefix/include"
for source in gtest-all gtest_main; do
  "$compiler" -std=c++17 -O1 "${flags[@]}" -I"$work/prefix/include" -I/usr/src/googletest/googletest \
    -c "/usr/src/googletest/googletest/src/$source.cc" -o "$work/$source.o" || fail "GoogleTest failed"
done
"$target-ar" rcs "$work/prefix/lib/libgtest.a" "$work/gtest-all.o"
"$target-ar" rcs "$work/prefix/lib/libgtest_main.a" "$work/gtest_main.o"

touch "$work/prefix/complete"
# Somebody else may have made the same meanwhile.
mv -T "$work/prefix" "$prefix" || [ -f "$prefix/complete" ] || fail "cannot write $prefix"
echo "$prefix" >&3
