#!/usr/bin/env bash
# Sizes of the tool's PNG files before and after optipng -o1, for 300 icons of a list:
# bench/png-sizes.sh TOOL LIST
set -euo pipefail
[ $# -eq 2 ] || {
  echo "usage: bench/png-sizes.sh TOOL LIST" >&2
  exit 2
}
tool=$1 list=$2 icons=300
command -v optipng >/dev/null || {
  echo "png-sizes: optipng is missing; install Debian's package of that name" >&2
  exit 1
}

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
mkdir "$folder/svg"
# Numbered, because files of different sets share names.
number=0
while IFS= read -r file; do
  number=$((number + 1))
  cp "$file" "$folder/svg/$number.svg"
done < <(awk -v all="$(wc -l <"$list")" -v take=$icons \
  'int(NR * take / all) > int((NR - 1) * take / all)' "$list")

total() { cat "$1"/*.png | wc -c; }
# Processor time of a command, in seconds.
seconds() {
  local TIMEFORMAT='%U %S'
  { time "$@" >/dev/null 2>&1; } 2>&1 | awk '{ print $1 + $2 }'
}

for size in 72 256; do
  own=$folder/$size
  smaller=$folder/$size-optipng
  mkdir "$own"
  drawing=$(seconds "$tool" render "$folder/svg" -o "$own" --width $size --height $size -j 1)
  cp -r "$own" "$smaller"
  optimizing=$(seconds optipng -quiet -o1 "$smaller"/*.png)
  awk -v size=$size -v count=$number -v a="$(total "$own")" -v b="$(total "$smaller")" \
    -v s="$drawing" -v t="$optimizing" \
    'BEGIN { printf "%d icons, %d px: %d bytes in %.2f s, drawing included, %.1f %% more than the %d of optipng -o1,",
               count, size, a, s, 100 * (a - b) / b, b
             printf " which takes another %.2f s\n", t }'
done
