#!/usr/bin/env bash
# Makes a Debian of 32 bits with its Wine, by debootstrap from the archive that the machine's apt is configured with,
# and tells where it lies.
#
#   i386_root.sh FOLDER
#
# 64 bits beside it, as the machine has, would not do: an archive's packages of the two widths need not agree. Each
# combination of archive, release, Wine and of this script has a folder of its own below FOLDER, so that none is ever
# stale; former ones go. Needs root.
set -euo pipefail
folder=$1
packages=wine,wine32

release=$(. /etc/os-release && echo "${VERSION_CODENAME-}")
archive=$(apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' 'Created-By: Packages' 'Origin: Debian' |
  awk -v release="$release" '$2 == release && $3 == "main" { print $1; exit }')
[ -n "$archive" ] || { echo "i386_root: apt knows no archive of Debian" >&2; exit 1; }
key=$({
  echo "$archive $release $packages $(dpkg-query -W -f='${source:Version}' wine)"
  cat "$0"
} | sha256sum | cut -c 1-16)
root=$folder/$key
if [ -f "$root/complete" ]; then
  echo "$root"
  exit 0
fi
[ "$(id -u)" -eq 0 ] || { echo "i386_root: only root can make it" >&2; exit 1; }

mkdir -p "$folder"
exec 9>"$folder.lock"
flock 9
if [ ! -f "$root/complete" ]; then
  find "$folder" -mindepth 1 -maxdepth 1 -exec rm -rf {} +
  # As apt does where the machine reaches its archive by a proxy.
  eval "$(apt-config shell http_proxy Acquire::http::Proxy https_proxy Acquire::https::Proxy)"
  [ -z "${http_proxy-}" ] || export http_proxy
  [ -z "${https_proxy-}" ] || export https_proxy
  # What it mounts is gone with its processes, also where it fails; and an archive may stumble.
  for try in 1 2 3; do
    if unshare --mount debootstrap --arch=i386 --variant=minbase --include="$packages" "$release" "$root" "$archive" \
      </dev/null >"$folder.log" 2>&1; then
      rm -rf "$root"/var/cache/apt/archives/*.deb "$root"/var/lib/apt/lists/* "$root"/usr/share/{doc,man,locale}
      touch "$root/complete"
      break
    fi
    rm -rf "$root"
  done
fi
[ -f "$root/complete" ] || { tail -n 20 "$folder.log"; echo "i386_root: debootstrap failed"; exit 1; } >&2
echo "$root"
