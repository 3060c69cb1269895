#!/bin/sh
# The example hosts on the shipped library, registered, and on the sample database; a user corrects the name of a
# person by keys, saves and leaves. An object of the tests takes the place of ADO for them. On the display that there is, or one of its own.
#
#   hosts_test.sh WINE LIBRARY STAND_IN DATABASE PHOTOGRAPHS CPP_HOST
set -eu
[ -n "${DISPLAY:-}" ] || exec "$(dirname "$0")/../outside/on_a_display.sh" "$0" "$@"
wine=$1 library=$2 stand_in=$3 database=$4 photographs=$5 cpp=$6
examples=$(cd "$(dirname "$0")/../../examples/windows" && pwd)
person=47EAA099-2CB6-416D-A6DC-283CF0480FF9
ado='HKCR\DossierKitTests.Connection'
class='HKCR\CLSID\{0B6B7A0C-9C57-4D5B-8A51-6F5F3E1C2D47}'
folder=$(mktemp -d)
fail() {
	echo "hosts_test: $*" >&2
	exit 1
}
end() {
	"$wine" reg delete "$ado" /f >/dev/null 2>&1 || true
	"$wine" reg delete "$class" /f >/dev/null 2>&1 || true
	"$wine" regsvr32 /s /u "$library" || true
	rm -rf "$folder"
}
trap end EXIT
"$wine" reg add "$ado\\CLSID" /ve /d '{0B6B7A0C-9C57-4D5B-8A51-6F5F3E1C2D47}' /f >/dev/null
"$wine" reg add "$class\\InprocServer32" /ve /d "Z:$stand_in" /f >/dev/null
"$wine" reg add "$class\\InprocServer32" /v ThreadingModel /d Apartment /f >/dev/null
"$wine" regsvr32 /s "$library" || fail "regsvr32 ended with $?"
for host in host.js host.vbs; do
	sed 's/ADODB.Connection/DossierKitTests.Connection/' "$examples/$host" >"$folder/$host"
done

# The caption of the window is the person's set; it is there once its page is.
await_window() {
	for _ in $(seq 150); do
		if xdotool search --name '人员维护' >/dev/null 2>&1; then return; fi
		sleep 0.2
	done
	fail "no window: $(cat "$folder/out")"
}

# one KEYS EXPECTED COMMAND...: what the host prints, and the name that is stored afterwards.
one() {
	keys=$1 printed=$2 name=$3
	shift 3
	cp "$database" "$folder/person.db"
	code=0
	timeout -k 5 90 "$@" "Z:$folder/person.db" "$person" "Z:$photographs" >"$folder/out" 2>&1 &
	host=$!
	await_window
	sleep 1
	for key in $keys; do
		xdotool key --clearmodifiers "$key"
		sleep 0.3
	done
	wait "$host" || code=$?
	[ "$code" -eq 0 ] || fail "$* ended with $code: $(cat "$folder/out")"
	[ "$(tr -d '\r' <"$folder/out")" = "$printed" ] || fail "$* printed $(cat "$folder/out")"
	stored=$(sqlite3 "$folder/person.db" "select A0101 from A01 where A00='$person'")
	[ "$stored" = "$name" ] || fail "$* stored $stored"
}

one 'End x alt+s alt+x' saved '陆怀谷x' "$wine" cscript //nologo "Z:$folder/host.js"
one 'End y alt+s alt+x' saved '陆怀谷y' "$wine" cscript //nologo "Z:$folder/host.vbs"
one 'End z alt+x n' 'nothing saved' '陆怀谷' "$wine" "$cpp"

# What a host in C++ takes for itself alone while a page is on show.
timeout -k 5 90 "$wine" "$cpp" "Z:$folder/person.db" "$person" "Z:$photographs" >"$folder/out" 2>&1 &
host=$!
await_window
sleep 1
kib=$(sed -n 's/^RssAnon:[^0-9]*\([0-9]*\).*/\1/p' "/proc/$(tr -d ' ' <"/proc/$host/task/$host/children")/status")
xdotool key --clearmodifiers alt+x
wait "$host" || fail "the host ended with $?: $(cat "$folder/out")"
echo "hosts_test: a page on show takes $((kib / 1024)) MiB"
[ "$kib" -gt 1024 ] && [ "$kib" -le 61440 ] || fail "a page on show takes $kib KiB"
