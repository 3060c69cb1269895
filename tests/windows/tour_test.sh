#!/bin/sh
# The tour of the demo host: a picture of each of the sixteen pages of a person, no two alike.
#
#   tour_test.sh WINE PROGRAM
set -eu
[ -n "${DISPLAY:-}" ] || exec "$(dirname "$0")/../outside/on_a_display.sh" "$0" "$@"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
fail() {
	echo "tour_test: $*" >&2
	exit 1
}
timeout -k 5 600 "$1" "$2" --tour "Z:$folder" >"$folder/out" || fail "ended with $?: $(cat "$folder/out")"
pages=$(tr -d '\r' <"$folder/out" | tr '\n' ' ')
[ "$pages" = "01 基本信息 02 学习经历 03 工作经历 04 主要兼职 05 访问进修 06 学术会议 07 专业成果 08 获奖信息 \
09 论文著作 10 成果介绍 11 主要成就 12 培养人才 13 领域认识 14 近期工作 15 授权专利 16 单位推荐情况 " ] ||
	fail "the pages are $pages"
for file in "$folder"/*.png; do
	[ "$(head -c 4 "$file" | tail -c 3)" = PNG ] || fail "$file is no picture"
	[ "$(wc -c <"$file")" -gt 10000 ] || fail "$file shows nothing"
done
different=$(sha256sum "$folder"/*.png | cut -d ' ' -f 1 | sort -u | wc -l)
[ "$different" -eq 16 ] || fail "$different different pictures"
