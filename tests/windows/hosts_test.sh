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

# await WHAT COMMAND: until the command succeeds, for longer than any machine needs.
await() {
	for _ in $(seq 1500); do
		if "$2"; then return; fi
		sleep 0.2
	done
	fail "no $1: $(cat "$folder/out")"
}
# The keyboard is with a window. The caption of ours is the person's set; it is there once its page is.
has_window() {
	window=$(xdotool getwindowfocus 2>/dev/null) && [ "$window" -gt 1 ] || return 1
	xdotool search --name '人员维护' 2>/dev/null | grep -x "$window" >/dev/null
}
# And then with another one.
has_box() { box=$(xdotool getwindowfocus 2>/dev/null) && [ "$box" -gt 1 ] && [ "$box" -ne "$window" ]; }

# one KEYS EXPECTED NAME COMMAND...: what the host prints, and the name that is stored afterwards. "box" among the keys
# waits for one.
one() {
	keys=$1 printed=$2 name=$3
	shift 3
	cp "$database" "$folder/person.db"
	code=0
	timeout -k 5 600 "$@" "Z:$folder/person.db" "$person" "Z:$photographs" >"$folder/out" 2>&1 &
	host=$!
	await window has_window
	for key in $keys; do
		case $key in
			box) await box has_box ;;
			*) xdotool key --clearmodifiers "$key" ;;
		esac
	done
	wait "$host" || code=$?
	[ "$code" -eq 0 ] || fail "$* ended with $code: $(cat "$folder/out")"
	[ "$(tr -d '\r' <"$folder/out")" = "$printed" ] || fail "$* printed $(cat "$folder/out")"
	stored=$(sqlite3 -init /dev/null "$folder/person.db" "select A0101 from A01 where A00='$person'")
	[ "$stored" = "$name" ] || fail "$* stored $stored"
}

one 'End x alt+s alt+x' saved '陆怀谷x' "$wine" cscript //nologo "Z:$folder/host.js"
one 'End y alt+s alt+x' saved '陆怀谷y' "$wine" cscript //nologo "Z:$folder/host.vbs"
one 'End z alt+x box n' 'nothing saved' '陆怀谷' "$wine" "$cpp"

# What a host in C++ takes for itself alone while a page is on show.
timeout -k 5 600 "$wine" "$cpp" "Z:$folder/person.db" "$person" "Z:$photographs" >"$folder/out" 2>&1 &
host=$!
await window has_window
sleep 1
kib=$(sed -n 's/^RssAnon:[^0-9]*\([0-9]*\).*/\1/p' "/proc/$(tr -d ' ' <"/proc/$host/task/$host/children")/status")
xdotool key --clearmodifiers alt+x
wait "$host" || fail "the host ended with $?: $(cat "$folder/out")"
echo "hosts_test: a page on show takes $((kib / 1024)) MiB"
[ "$kib" -gt 1024 ] && [ "$kib" -le 61440 ] || fail "a page on show takes $kib KiB"
