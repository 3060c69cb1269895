#!/usr/bin/env bash
# Runs a program of Windows of 32 bits under Wine, in a Debian of 32 bits below the build that is made once. Needs
# root. The program sees the project, /tmp with the sockets of X displays and the fonts at their places.
#
#   wine32.sh PROGRAM [ARGUMENT...]
set -euo pipefail
project=$(cd "$(dirname "$(readlink -f "$0")")/.." && pwd)
root=$("$project/scripts/i386_root.sh" "$project/build/i386")
export WINEPREFIX=$project/build/wine32
# The mounts are of this process and its children alone, and gone with them.
exec unshare --mount bash -euc '
  root=$1 project=$2
  shift 2
  mount -t proc proc "$root/proc"
  for folder in /dev /tmp "${TMPDIR:-/tmp}" /usr/share/fonts "$project"; do
    mkdir -p "$root$folder"
    mount --bind "$folder" "$root$folder"
  done
  exec chroot "$root" env --chdir="$PWD" "$project/scripts/wine.sh" "$@"' wine32 "$root" "$project" "$@"
