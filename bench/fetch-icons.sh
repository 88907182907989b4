#!/usr/bin/env bash
# Fetches the icon sets and resvg, as listed in bench/icons/package.json, into build/icons and writes
# build/icons/list.txt: 132 files of each set that bench/icons/sets marks with "bench", spread evenly over its files in
# alphabetical order, so that every machine measures the same files.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
export LC_ALL=C

per_set=132
folder=build/icons
list=$folder/list.txt

fail() {
  echo "fetch-icons: $*" >&2
  exit 1
}

if ! cmp -s bench/icons/package.json "$folder/fetched.json"; then
  mkdir -p "$folder"
  cp bench/icons/package.json "$folder/package.json"
  npm install --prefix "$folder" --ignore-scripts --no-audit --no-fund --no-package-lock ||
    fail "npm could not fetch the sets of bench/icons/package.json"
  cp bench/icons/package.json "$folder/fetched.json"
fi

# Files with arcs, quadratic curves or elements that Ozmira leaves out are excluded, because leaving out part of a
# picture would look like speed.
unsupported='<(text|symbol|image|style|filter|mask|pattern|marker|foreignObject)[ />]|[[:space:]]d="[^"]*[AaQqTt]'

rm -f "$list.new"
sort bench/icons/sets | while read -r set icons use; do
  [ "$use" = bench ] || continue
  # grep exits with a failure if no file of a batch qualifies, hence "|| true"; the count below is the real check.
  files=$(find "$folder/node_modules/$icons" -name '*.svg' -exec grep -LzE "$unsupported" {} + | sort || true)
  count=$(wc -l <<<"$files")
  [ "$count" -ge "$per_set" ] || fail "$set has only $count usable files"
  awk -v all="$count" -v take="$per_set" 'int(NR * take / all) > int((NR - 1) * take / all)' <<<"$files" \
    >>"$list.new"
  echo "$set: $per_set of $count files"
done
mv "$list.new" "$list"
