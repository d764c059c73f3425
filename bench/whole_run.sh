#!/usr/bin/env bash
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
#
# Times whole runs of vexta on made-up reads, against reading the files at all (wc -l) and against a
# literal writing of the rules on one thread, whose counts must be the same.
# Usage: bench/whole_run.sh [PAIRS [BUILD_DIRECTORY]]    (60000, build/bench)
# Prints medians of three (the literal one, which is slow, runs once) and their ratios; only ratios of
# one call can be compared. Peak memory is measured for a quarter of the pairs as well: it must not
# grow with them.
set -euo pipefail
cd "$(dirname "$0")/.."

pairs=${1:-60000}
bin=${2:-build/bench}/bin
catalogue=resources/ReferenceNucleotideSequence.txt
rounds=3

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
vexta=("$bin/vexta" analyze --quiet --settings "$work/settings.json" --catalogue "$catalogue")

# Six tenths of the pairs carry an entry, all entries alike often.
panel() { # <pairs>
    printf 'sample\tnumber\tformat\tdomain\tmutation\tpairs\tcall\n'
    "$bin/vexta" catalogue list --catalogue "$catalogue" | awk -F'\t' -v pairs="$1" '
        NR > 1 { domain[NR] = $1; mutation[NR] = $3 }
        END {
            each = int(0.6 * pairs / (NR - 1))
            split("Plain\t1\tplain|Gz\t2\tgz", samples, "|")
            for (s = 1; s <= 2; ++s) {
                printf "%s\tbackground\t-\t%d\t-\n", samples[s], pairs - each * (NR - 1)
                for (i = 2; i <= NR; ++i)
                    printf "%s\t%s\t%s\t%d\t-\n", samples[s], domain[i], mutation[i], each
            }
        }'
}

make_reads() { # <directory> <pairs>
    mkdir "$1"
    panel "$2" >"$1/panel.tsv"
    "$bin/vexta-make-reads" --catalogue "$catalogue" --seed 20 --error-rate 0.001 "$1/panel.tsv" "$1"
}

# Median seconds of a command, which prints nothing.
seconds() { # <command>...
    for ((i = 0; i < rounds; ++i)); do
        local start=$EPOCHREALTIME
        "$@" >"$work/output"
        awk -v from="$start" -v to="$EPOCHREALTIME" 'BEGIN { printf "%.3f\n", to - from }'
    done | sort -n | sed -n "$(((rounds + 1) / 2))p"
}

peak_megabytes() { # <command>...
    /usr/bin/time -f %M -o "$work/peak" "$@" >"$work/output"
    awk '{ printf "%.0f\n", $1 / 1024 }' "$work/peak"
}

row() { # <name> <seconds>
    awk -v name="$1" -v s="$2" -v wc="$wc_seconds" -v literal="$literal_seconds" 'BEGIN {
        printf "%-28s %8.2f s %8.2f x wc -l %10.2f x faster than literal\n", name, s, s / wc, literal / s }'
}

make_reads "$work/run" "$pairs"
make_reads "$work/quarter" "$((pairs / 4))"
plain=("$work/run/Plain_S1_L001_R1_001.fastq" "$work/run/Plain_S1_L001_R2_001.fastq")
gz=$work/run/Gz_S2_L001_R1_001.fastq.gz
cat "$work"/run/*.fastq "$work"/run/*.gz >/dev/null # all from the page cache

wc_seconds=$(seconds wc -l "${plain[@]}")
literal_seconds=$(rounds=1 seconds "$bin/literal_reference" "$catalogue" "${plain[@]}")
echo "$pairs pairs, $(nproc) cores"
row "wc -l, both files" "$wc_seconds"
row "literal, 1 thread" "$literal_seconds"
for threads in 1 2; do
    row "vexta, plain, $threads worker(s)" "$(seconds "${vexta[@]}" --threads $threads "${plain[0]}")"
    row "vexta, gz, $threads worker(s)" "$(seconds "${vexta[@]}" --threads $threads "$gz")"
done

if [ -x /usr/bin/time ]; then
    for directory in quarter run; do
        for name in Plain_S1_L001_R1_001.fastq Gz_S2_L001_R1_001.fastq.gz; do
            printf 'peak memory, %-7s %-28s %s MB\n' "$directory" "$name" \
                "$(peak_megabytes "${vexta[@]}" --threads 2 "$work/$directory/$name")"
        done
    done
fi

"$bin/literal_reference" "$catalogue" "${plain[@]}" | tail -n +3 >"$work/literal_counts"
"${vexta[@]}" --json - "${plain[0]}" | grep -o '"match":[0-9]*' | cut -d: -f2 >"$work/vexta_counts"
cmp "$work/literal_counts" "$work/vexta_counts" && echo "the counts are the same"
