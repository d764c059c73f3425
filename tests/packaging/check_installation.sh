#!/bin/sh
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
#
# Installs one component into a directory of its own and compares the names of its files with the expected.
# Usage: check_installation.sh CMAKE BUILD_DIRECTORY SOURCE_DIRECTORY COMPONENT EXPECTED
set -eu
cmake=$1 build=$2 source=$3 component=$4 expected=$5
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/installed

# Every page of docs/ belongs to the command line's component.
pages() {
    [ "$component" != vexta ] ||
        (cd "$source" && find docs -name '*.md' -o -name '*.json' -o -name '*.svg' -o -name '*.png') |
            sed 's,^,./share/doc/vexta/,'
}

# Links of installed pages to files that are not installed.
lost_links() {
    find "$prefix" -name '*.md' | while IFS= read -r page; do
        { grep -o '](.[^)]*)' "$page" || true; } | sed 's/^](//; s/[#)].*//' | while IFS= read -r link; do
            case $link in
                '' | *://*) ;;
                *) [ -e "$(dirname "$page")/$link" ] || echo "$page: $link" ;;
            esac
        done
    done
}

"$cmake" --install "$build" --component "$component" --prefix "$prefix" >/dev/null
{ cat "$expected"; pages; } | LC_ALL=C sort >"$work/expected"
(cd "$prefix" && find . -type f | LC_ALL=C sort) | diff "$work/expected" -
lost_links >"$work/lost"
[ ! -s "$work/lost" ] || { echo "links to what is not installed:"; cat "$work/lost"; exit 1; } >&2

if [ "$component" = vexta ]; then
    # Each finding begins with the catalogue's path; far from the source tree it is the one beside the program.
    case $(cd / && "$prefix/bin/vexta" catalogue check) in
        "$prefix"/*) ;;
        *) echo "the installed program does not use its own catalogue" >&2; exit 1 ;;
    esac
fi
