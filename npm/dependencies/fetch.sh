#!/usr/bin/env bash
# Fetches the sources of the C and C++ libraries that the WebAssembly modules contain, as Debian patches them, into
# build/wasm/sources. Debian has these libraries compiled for its own machines only.
#
# The lists of source packages are kept apart from the system's, which usually has none; so no root is needed.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

libraries=(expat libdeflate libpolyclipping libspng zlib)
folder=$PWD/build/wasm
sources=$folder/sources

fail() {
  echo "fetch: $*" >&2
  exit 1
}

is_fetched() { compgen -G "$sources/$1-[0-9]*/debian/control" >/dev/null; }

# Turns the system's lists of binary packages, in both of their formats, into lists of source packages.
write_lists() {
  mkdir -p "$folder/apt/parts" "$folder/apt/lists"
  local list
  for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ ! -f "$list" ] || sed -n 's/^deb /deb-src /p' "$list" >"$folder/apt/parts/$(basename "$list" .list).list"
  done
  for list in /etc/apt/sources.list.d/*.sources; do
    [ ! -f "$list" ] || sed 's/^Types:.*/Types: deb-src/' "$list" >"$folder/apt/parts/$(basename "$list")"
  done
}

apt_options=(-q -o Dir::Etc::SourceList=/dev/null -o "Dir::Etc::SourceParts=$folder/apt/parts"
  -o "Dir::State::Lists=$folder/apt/lists" -o APT::Sandbox::User=)

# fetch PACKAGE: the newest version that can be had; a mirror may list one that it no longer holds.
fetch() {
  local version
  for version in $(apt-cache "${apt_options[@]}" showsrc "$1" | sed -n 's/^Version: //p' | sort -Vr -u); do
    if (cd "$sources" && apt-get "${apt_options[@]}" source "$1=$version"); then return; fi
  done
  fail "no source of $1 could be fetched (see above)"
}

missing=()
for library in "${libraries[@]}"; do is_fetched "$library" || missing+=("$library"); done
[ ${#missing[@]} -gt 0 ] || exit 0
mkdir -p "$sources"
write_lists
apt-get "${apt_options[@]}" update || fail "the lists of source packages could not be fetched"
for library in "${missing[@]}"; do fetch "$library"; done
