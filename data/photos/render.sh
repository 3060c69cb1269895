#!/bin/sh
# Draws the photographs from the SVG sources. Needs rsvg-convert (librsvg) and the convert command of
# ImageMagick; CONVERT names another one.
set -eu
cd "$(dirname "$0")"
convert=${CONVERT:-convert}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
trap 'exit 1' HUP INT TERM

for source in svg/*.svg; do
	name=$(basename "$source" .svg)
	rsvg-convert -w 363 -h 477 "$source" -o "$work/out.png"
	"$convert" "$work/out.png" -strip -quality 88 "$work/out.jpg"
	mv -f "$work/out.jpg" "$name.jpg"
done
