#!/bin/sh
# The zip for Windows holds both widths and what a host's author needs; a library has at most 4 MB.
#
#   zip_test.sh BUILD WINE
set -eu
source=$(cd "$(dirname "$0")/../.." && pwd)
wine=$2
cd "$1"
if ! [ -f ../windows-x86/bin/DossierKit.dll ]; then
	echo "zip_test: skipped, build/windows-x86 is not there"
	exit 77
fi
cpack >cpack.log 2>&1 || { cat cpack.log >&2; exit 1; }
rm -rf unpacked
mkdir unpacked
cd unpacked
cmake -E tar xf ../dossierkit-*-windows.zip
found=$(cd dossierkit-*-windows && find . -type f ! -path '*/photos/*' | LC_ALL=C sort)
expected="./CHANGELOG.md
./bench/README.md
./docs/database.md
./docs/database.zh-CN.md
./docs/hazards.md
./docs/hazards.zh-CN.md
./docs/keys.zh-CN.md
./docs/servers.md
./docs/servers.zh-CN.md
./docs/windows.md
./docs/windows.zh-CN.md
./examples/windows/cpp/CMakeLists.txt
./examples/windows/cpp/main.cpp
./examples/windows/host.js
./examples/windows/host.vbs
./include/dossierkit.idl
./include/dossierkit_com.h
./x64/DossierKit.dll
./x64/USER.ICO
./x64/dossier.exe
./x64/empty.db
./x64/sample.db
./x64/xinxj.ico
./x86/DossierKit.dll
./x86/USER.ICO
./x86/dossier.exe
./x86/empty.db
./x86/sample.db
./x86/xinxj.ico"
photos=$(cd dossierkit-*-windows && find . -path '*/photos/*' | LC_ALL=C sort)
expected_photos=$(for width in x64 x86; do (cd "$source/data" && find photos -maxdepth 1 -name '*.jpg' | sed "s#^#./$width/#"); done |
	LC_ALL=C sort)
[ "$photos" = "$expected_photos" ] || { echo "zip_test: the photographs are"; echo "$photos"; exit 1; } >&2
[ "$found" = "$expected" ] || { echo "zip_test: it holds"; echo "$found"; exit 1; } >&2
large=$(find . -name '*.dll' -size +4000000c)
[ -z "$large" ] || { echo "zip_test: more than 4 MB: $large" >&2; exit 1; }

"$source/tests/embedding/links.py" "$PWD"/dossierkit-*-windows CHANGELOG.md docs/windows.md docs/windows.zh-CN.md
"$source/tests/windows/tour_test.sh" "$wine" "$(pwd)"/dossierkit-*-windows/x64/dossier.exe
