#!/usr/bin/env bash
# Runs a program of Windows under Wine, in a prefix of the build that is made once and again for another Wine.
#
#   wine.sh PROGRAM [ARGUMENT...]
set -euo pipefail
build=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd)/build
# Without a locale of UTF-8 Wine cannot make a file with a Chinese name.
export LC_ALL=C.UTF-8 WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES="mscoree,mshtml="
export WINEPREFIX="${WINEPREFIX:-$build/wine}"

version="$(wine --version), unmanaged"
if [ "$(cat "$WINEPREFIX/made-by" 2>/dev/null)" != "$version" ]; then
  mkdir -p "$build"
  exec 9>"$build/wine.lock"
  flock 9
  if [ "$(cat "$WINEPREFIX/made-by" 2>/dev/null)" != "$version" ]; then
    rm -rf "$WINEPREFIX"
    # What they leave running must not hold the lock, nor be there for a program with windows: a desktop that was
    # begun without a display has none.
    env -u DISPLAY wine wineboot --init >"$build/wine.log" 2>&1 9>&- || { cat "$build/wine.log" >&2; exit 1; }
    # A display of the tests has no window manager, for which Wine would wait.
    env -u DISPLAY wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >>"$build/wine.log" 2>&1 9>&-
    wineserver --kill || true  # that there is none any more
    wineserver --wait
    echo "$version" >"$WINEPREFIX/made-by"
  fi
  exec 9>&-
fi
exec wine "$@"
