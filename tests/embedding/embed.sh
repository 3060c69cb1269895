#!/usr/bin/env bash
# Builds the examples as a stranger does, and runs each: embed.sh WAY FOLDER SAMPLE [BUILD]
#
#   installed     each by itself, on an installation of BUILD and a clean environment; once more by pkg-config
#   subdirectory  the component is a part of the host's project
#   fetched       the same by FetchContent
#   shared        each on an installation of shared libraries
#   package       each on the Debian package of BUILD
#
# FOLDER is for what is built, and kept from one run to the next; SAMPLE is a sample database.
set -euo pipefail
way=$1 folder=$(realpath -m "$2") sample=$3
root=$(cd "$(dirname "$0")/../.." && pwd)
mkdir -p "$folder"
cache=$(ccache --get-config cache_dir)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Nothing of the caller's but where programs lie, and the cache of compiled files.
clean() {
  env -i PATH=/usr/local/bin:/usr/bin:/bin HOME="$work" LC_ALL=C.UTF-8 XDG_RUNTIME_DIR="$work" CCACHE_DIR="$cache" "$@"
}
quietly() { "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; echo "embed: $* failed" >&2; exit 1; }; }

# configure SOURCE BUILD options...
configure() { quietly clean cmake -S "$1" -B "$2" -G Ninja -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "${@:3}"; }
build() { quietly clean cmake --build "$1"; }

# In Debug without optimisation or symbols: that it is built and linked is in question here, not its speed.
plainly=(-DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON)

# What its author reads, and the examples that are there to be copied.
read_by_hosts=(README.md README.zh-CN.md docs/database.md docs/hazards.zh-CN.md data/schema.sql
  examples/console/CMakeLists.txt examples/qt_widgets/main.cpp examples/batch_test/main.cpp)

# on_installation PREFIX: all three examples, each a project of its own.
on_installation() {
  local example
  for example in console batch_test qt_widgets; do
    configure "$root/examples/$example" "$folder/$example" -DCMAKE_PREFIX_PATH="$1"
    build "$folder/$example"
  done
}

case $way in
  installed)
    prefix=$folder/prefix
    rm -rf "$prefix"
    quietly cmake --install "$4" --prefix "$prefix"
    on_installation "$prefix"
    # Without CMake.
    export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
    # What it says is quoted for a shell.
    eval "flags=($(pkg-config --cflags --libs dossierkit))"
    quietly g++ -std=c++20 "$root/examples/console/main.cpp" -o "$folder/by_pkg_config" "${flags[@]}"
    [ "$("$prefix/bin/dossier" --version)" = "dossier $(pkg-config --modversion dossierkit)" ]
    for file in USER.ICO xinxj.ico sample.db photos; do [ -e "$prefix/share/dossierkit/$file" ]; done
    "$root/tests/embedding/links.py" "$prefix/share/doc/dossierkit" "${read_by_hosts[@]}"
    ;;
  subdirectory | fetched)
    configure "$root/tests/embedding" "$folder" "${plainly[@]}" -DWAY="$way"
    build "$folder"
    ;;
  shared)
    configure "$root" "$folder/component" "${plainly[@]}" -DBUILD_SHARED_LIBS=ON -DDOSSIERKIT_HOST=OFF \
      -DDOSSIERKIT_BENCHMARKS=OFF
    build "$folder/component"
    rm -rf "$folder/prefix"
    quietly cmake --install "$folder/component" --prefix "$folder/prefix"
    # What hosts do not call is hidden.
    if nm -DC --defined-only "$folder/prefix/lib/libdossierkit_system.so" | grep -E 'frmDossier|ctrlUser|LookupCode'; then
      echo "embed: the shared library shows what it should hide" >&2
      exit 1
    fi
    on_installation "$folder/prefix"
    ;;
  package)
    rm -rf "$folder/unpacked" "$folder/packages"
    (cd "$4" && quietly cpack -B "$folder/packages")
    dpkg-deb -x "$folder"/packages/libdossierkit-dev_*.deb "$folder/unpacked"
    on_installation "$folder/unpacked/usr"
    "$root/tests/embedding/links.py" "$folder/unpacked/usr/share/doc/dossierkit" "${read_by_hosts[@]}"
    ;;
  *) echo "embed: no such way: $way" >&2; exit 2 ;;
esac

cp "$sample" "$work/people.db"
told=$(clean "$folder/batch_test/batch_test" "$work/people.db")
[ "$told" = "192 pages, 0 faults" ] || { echo "embed: batch_test said: $told" >&2; exit 1; }
"$root/tests/outside/on_a_display.sh" "$root/tests/outside/leave_the_examples.py" "$work/people.db" \
  "$folder/console/console" "$folder/qt_widgets/qt_widgets" 2>"$work/log" || { cat "$work/log" >&2; exit 1; }
