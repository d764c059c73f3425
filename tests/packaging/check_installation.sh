#!/bin/sh
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
#
# Installs one component into a directory of its own and compares the names of its files with the expected.
# Usage: check_installation.sh CMAKE BUILD_DIRECTORY COMPONENT EXPECTED
set -eu
cmake=$1 build=$2 component=$3 expected=$4
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
"$cmake" --install "$build" --component "$component" --prefix "$prefix" >/dev/null
(cd "$prefix" && find . -type f | LC_ALL=C sort) | diff "$expected" -
if [ "$component" = vexta ]; then
    # Each finding begins with the catalogue's path; far from the source tree it is the one beside the program.
    case $(cd / && "$prefix/bin/vexta" catalogue check) in
        "$prefix"/*) ;;
        *) echo "the installed program does not use its own catalogue" >&2; exit 1 ;;
    esac
fi
