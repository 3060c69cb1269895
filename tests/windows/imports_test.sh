#!/bin/sh
# Programs of Windows need nothing beside them but what Windows itself brings.
#
#   imports_test.sh OBJDUMP FILE...
set -eu
objdump=$1
shift
for file in "$@"; do
	imports=$("$objdump" -p "$file" | sed -n 's/.*DLL Name: //p' | tr 'A-Z' 'a-z' | sort -u)
	[ -n "$imports" ] || { echo "$file: no program" >&2; exit 1; }
	for import in $imports; do
		case $import in
			advapi32.dll | comctl32.dll | comdlg32.dll | gdi32.dll | gdiplus.dll | imm32.dll | kernel32.dll | msimg32.dll | msvcrt.dll | \
				ole32.dll | oleacc.dll | oleaut32.dll | shell32.dll | user32.dll | uxtheme.dll) ;;
			*)
				echo "$file needs $import" >&2
				exit 1 ;;
		esac
	done
done
