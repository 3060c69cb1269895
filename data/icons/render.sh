#!/bin/sh
# Draws the icon files from the SVG sources. Needs rsvg-convert (librsvg) and the
# convert command of ImageMagick; CONVERT names another one.
set -eu
cd "$(dirname "$0")"
convert=${CONVERT:-convert}
"$convert" -version | grep -q ImageMagick || {
	echo "render: $convert is not ImageMagick" >&2
	exit 1
}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM

for n in 1 2 3 4 5 6 7 9; do
	rsvg-convert -w 24 -h 24 "svg/toolbar-$n.svg" -o "$work/toolbar-$n.png"
	"$convert" "$work/toolbar-$n.png" -strip -define png:exclude-chunks=date,time "PNG32:$work/out.png"
	mv -f "$work/out.png" "toolbar-$n.png"
done

# icon SOURCE FILE: a picture of 16 and one of 32 pixels
icon() {
	rsvg-convert -w 16 -h 16 "svg/$1.svg" -o "$work/16.png"
	rsvg-convert -w 32 -h 32 "svg/$1.svg" -o "$work/32.png"
	"$convert" "$work/32.png" "$work/16.png" "ICO:$work/out.ico"
	mv -f "$work/out.ico" "$2"
}
icon user USER.ICO
icon xinxj xinxj.ico
