# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""What is compared with what: the commands, and the ratios that are asked of them."""
from dataclasses import dataclass

from comparison.made_data import files
from comparison.rounds import Command, Group

ANALYZE = "analyze --quiet --settings settings.json --catalogue"


def vexta(prefix, options="", catalogue="c100", program="./vexta"):
    line = f"{program} {ANALYZE} {catalogue}.txt {options} {files(prefix, 1)}"
    return " ".join(line.split())


def on_both(prefix, first, second=None):
    """A command on each file, both at once; it fails if one of them does."""
    return (f"{first} {files(prefix, 1)} & first=$!; "
            f"{second or first} {files(prefix, 2)} && wait $first")


def both(prefix):
    return f"{files(prefix, 1)} {files(prefix, 2)}"


def plain_group(runs):
    return Group("plain", runs, [
        Command("wc -l", on_both("reads", "wc -l")),
        Command("vexta", vexta("reads")),
        Command("vexta, 1 thread", vexta("reads", "--threads 1")),
        Command("vexta, -march=native", vexta("reads", program="./vexta-native")),
        Command("vexta, unassigned pairs written", vexta("reads", "--unassigned unassigned.txt"),
                prepare="rm -f unassigned.txt"),
        Command("ripgrep", on_both("reads", "rg -c -F -f cores1.txt", "rg -c -F -f cores2.txt"),
                tool="rg"),
    ])


def gz_group(runs):
    return Group("gz", runs, [
        Command("igzip -dc", on_both("packed", "igzip -dc"), tool="igzip"),
        Command("vexta, gz", vexta("packed")),
    ])


def literal_group(runs):
    return Group("literal", max(1, runs // 2), [
        Command("vexta", vexta("reads")),
        Command("vexta, gz", vexta("packed")),
        Command("literal, part", f"./literal_reference c100.txt {both('part')}"),
    ])


def catalogue_group(runs):
    return Group("catalogues", runs, [
        Command("vexta, half", vexta("half")),
        Command("vexta, 1,000 entries", vexta("k1", catalogue="c1000")),
        Command("vexta, 10,000 entries", vexta("k10", catalogue="c10000")),
    ])


def tool_group(runs):
    paired = f"-1 {files('half', 1)} -2 {files('half', 2)}"
    return Group("tools", max(1, runs // 2 + runs % 2), [
        Command("vexta, half", vexta("half")),
        Command("kallisto quant",
                f"kallisto quant -i kallisto.index -o kallisto -t 2 {both('half')}",
                prepare="rm -rf kallisto", tool="kallisto"),
        Command("salmon quant", f"salmon quant -i salmon.index -l A {paired} -p 2 -o salmon",
                prepare="rm -rf salmon", tool="salmon"),
        Command("fastp", f"fastp -i {files('half', 1)} -I {files('half', 2)} -w 2 "
                "-j fastp.json -h fastp.html", tool="fastp"),
    ])


def copies_group(runs):
    # What an earlier command left must not be written out while the next one is measured.
    clean = "rm -f copy1 copy2 unassigned.txt _reads* reads.failed*; sync"
    copy = f"cp {files('reads', 1)} copy1 && cp {files('reads', 2)} copy2"
    return Group("copies", max(1, runs // 2 + runs % 2), [
        Command("vexta --working-copies", vexta("reads", "--working-copies"), prepare=clean),
        Command("cp, then vexta", f"{copy} && {vexta('reads')}", prepare=clean),
        Command("cp, then vexta, unassigned pairs written",
                f"{copy} && {vexta('reads', '--unassigned unassigned.txt')}", prepare=clean),
    ])


def all_groups(runs):
    makers = [plain_group, gz_group, catalogue_group, copies_group, literal_group, tool_group]
    return [make(runs) for make in makers]


@dataclass
class Question:
    """A ratio of two commands of a group. `at_most` says on which side of the bound it is to be."""
    text: str
    group: str
    numerator: str
    denominator: str
    bound: float = None
    at_most: bool = True
    aim: float = None
    scale: float = 1.0


def slower(text, group, numerator, denominator, bound=None, aim=None):
    return Question(text, group, numerator, denominator, bound, True, aim)


def faster(text, group, numerator, denominator, bound, aim=None, scale=1.0):
    return Question(text, group, numerator, denominator, bound, False, aim, scale)


def all_questions(pairs):
    """`pairs` are the pairs in the files of each prefix."""
    # Two literal workers that share the pairs without any loss.
    literal = pairs["reads"] / pairs["part"] / 2
    return [
        slower("plain: wall against both files through `wc -l` at once",
               "plain", "vexta", "wc -l", 2.5, 1.8),
        slower(".gz: wall against both files through `igzip -dc` at once",
               "gz", "vexta, gz", "igzip -dc", 2.0, 1.3),
        slower("one thread, plain, against the same `wc -l`",
               "plain", "vexta, 1 thread", "wc -l", 4.5, 3),
        faster("plain, against a literal reading of the rules by two ideal workers",
               "literal", "literal, part", "vexta", 90, 150, literal),
        faster(".gz, against the same (which reads plain text)",
               "literal", "literal, part", "vexta, gz", 30, 40, literal),
        faster("against `ripgrep -c -F -f` on both files", "plain", "ripgrep", "vexta", 3.5, 5),
        faster("against `kallisto quant`", "tools", "kallisto quant", "vexta, half", 20),
        faster("against `salmon quant`", "tools", "salmon quant", "vexta, half", 40),
        faster("against `fastp` without output", "tools", "fastp", "vexta, half", 50),
        slower("wall per pair, 1,000 entries against 100",
               "catalogues", "vexta, 1,000 entries", "vexta, half", 2, 1.3),
        slower("wall per pair, 10,000 entries against 100",
               "catalogues", "vexta, 10,000 entries", "vexta, half", 6, 2),
        slower("portable build against `-march=native`",
               "plain", "vexta", "vexta, -march=native", 1.1),
        slower("unassigned pairs written, against not",
               "plain", "vexta, unassigned pairs written", "vexta", 2.0, 1.5),
        slower("`--working-copies`, plain: wall against `cp` of both files and a direct run",
               "copies", "vexta --working-copies", "cp, then vexta", 1.3),
        slower("the same, when the direct run writes the unassigned pairs as well",
               "copies", "vexta --working-copies", "cp, then vexta, unassigned pairs written"),
    ]


MEMORY_BOUND_MB = 64


def memory_commands():
    """Commands whose peak memory is measured; no bound for those of the greatest catalogue."""
    return {
        "plain": vexta("reads"), "plain, half of the pairs": vexta("half"),
        ".gz": vexta("packed"), "10,000 entries": vexta("k10", catalogue="c10000"),
    }
