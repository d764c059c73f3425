#!/bin/sh
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
#
# scripts/demo in a tree where everything that it calls is made up: what it says is looked at, nothing is built.
# Usage: check_demo.sh SOURCE_DIRECTORY
set -eu
source=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$work/scripts" "$work/bin" "$work/build/demo/bin"
cp "$source/scripts/demo" "$work/scripts"

stub() { # <file>; its commands come from standard input
    { echo '#!/bin/sh'; cat; } >"$work/$1"
    chmod +x "$work/$1"
}
stub scripts/install-dependencies <<'END'
echo "Installing a compiler" >&2
END
stub build/demo/bin/vexta <<'END'
echo "summary table"
END
# As ninja tells of a build; the last line of a failing one says why.
stub bin/cmake <<'END'
[ "$1" = --build ] || exit 0
seq -f "[%g/180] Building" 1 180
[ ! -e fails ] || { echo "error: no such header"; exit 1; }
END

demo() { (cd "$work" && PATH="$work/bin:$PATH" scripts/demo 2>"$work/err"); }
wrong() { echo "$1; it said:" >&2; cat "$work/err" >&2; exit 1; }

[ "$(demo)" = "summary table" ] || wrong "standard output holds more or less than the table"
[ "$(wc -l <"$work/err")" -le 5 ] || wrong "off a terminal a few lines are enough"
grep -q minutes "$work/err" || wrong "it does not say how long it takes"
grep -q '^\[180/180\]' "$work/build/demo.log" || wrong "the log does not hold what the build said"
grep -q 'Installing a compiler' "$work/build/demo.log" || wrong "the log does not hold what was installed"

if command -v script >/dev/null; then
    (cd "$work" && PATH="$work/bin:$PATH" script -qec scripts/demo /dev/null) >"$work/err" </dev/null
    [ "$(wc -l <"$work/err")" -le 5 ] || wrong "on a terminal the build takes more than one line"
    grep -q 'Building: 90 of 180' "$work/err" || wrong "on a terminal nothing shows how far the build is"
fi

touch "$work/fails"
! demo >"$work/out" || wrong "a build that fails is a success"
[ ! -s "$work/out" ] || wrong "there is a table although the build failed"
grep -q 'build/demo.log' "$work/err" || wrong "a failure does not name the log"
grep -q 'no such header' "$work/err" || wrong "a failure does not say why"
