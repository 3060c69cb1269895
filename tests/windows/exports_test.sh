#!/bin/sh
# A library of COM shows the four functions of such a server, undecorated, and nothing else.
#
#   exports_test.sh OBJDUMP FILE
set -eu
exports=$("$1" -p "$2" | sed -n '/Ordinal\/Name Pointer/,/^$/s/^[[:space:]]*\[ *[0-9]*\] *//p' | sed 's/.* //' | sort | tr '\n' ' ')
[ "$exports" = "DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer " ] || {
	echo "$2 shows: $exports" >&2
	exit 1
}
