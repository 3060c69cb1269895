#!/bin/sh
# A library is registered, driven by a script host and unregistered again.
#
#   script_test.sh WINE LIBRARY
set -eu
wine=$1
library=$2
here=$(cd "$(dirname "$0")" && pwd)
fail() {
	echo "script_test: $*" >&2
	exit 1
}

"$wine" regsvr32 /s "$library" || fail "regsvr32 ended with $?"
trap '"$wine" regsvr32 /s /u "$library" || true' EXIT
code=0
out=$("$wine" cscript //nologo "Z:$here/host.js") || code=$?
out=$(printf %s "$out" | tr -d '\r')
[ "$code" -eq 42 ] || fail "the host ended with $code: $out"
expected="OperationType 0, PersonType 0, PhotoPath '', personID ''
3 1 C:\\photos 47EAA099-2CB6-416D-A6DC-283CF0480FF9
40000: failure 8002000a
text: failure 80020005
unknown member: failure 80020006
connection of the host
visit with what is no connection: failure 800a01b6
visit with a closed one: failure 800a0e78"
[ "$out" = "$expected" ] || fail "the host printed:
$out"

trap - EXIT
"$wine" regsvr32 /s /u "$library" || fail "regsvr32 /u ended with $?"
if "$wine" reg query 'HKCR\DossierKit.IUserCtrl' >/dev/null 2>&1; then fail "the ProgID is still there"; fi
