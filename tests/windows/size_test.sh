#!/bin/sh
# The library stays small, without what debuggers alone read.
#
#   size_test.sh STRIP FILE
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
"$1" -o "$folder/stripped" "$2"
size=$(wc -c <"$folder/stripped")
[ "$size" -le 4194304 ] || {
	echo "$2 has $size bytes" >&2
	exit 1
}
