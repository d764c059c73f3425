#!/usr/bin/env python3
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""Made-up catalogues of any size in the shape of a panel.

Usage: made_catalogue.py ENTRIES    (a multiple of 100; writes to standard output)

Every 100 entries are 35 domains: a wild type and one or two mutants each, with the same flanks and
a substitution or a deletion between them. Cores have 31 to 50 bases. Five domains ask for read 1
and five for read 2 alone, the others for both; one has an ambiguity code in its cores.
"""
import random
import sys
from dataclasses import dataclass

SEED = 20
# Longer than a fragment with its jitter, so that tools which align find whole reads in it.
SEQUENCE_BASES = 260
FLANK_BASES = 10
DOMAINS_PER_HUNDRED = 35


@dataclass
class Entry:
    name: str
    left: str
    right: str
    strand: str
    sequence: str

    def core(self):
        begin = self.sequence.find(self.left)
        return self.sequence[begin:self.sequence.find(self.right) + FLANK_BASES]


@dataclass
class Domain:
    name: str
    type: str
    entries: list


def bases(rng, count):
    return "".join(rng.choices("ACGT", weights=(30, 20, 20, 30), k=count))


def mutated(rng, middle):
    """A base changed, or three to nine bases deleted."""
    at = rng.randrange(2, len(middle) - 9)
    if rng.random() < 0.75:
        return middle[:at] + rng.choice("ACGT".replace(middle[at], "")) + middle[at + 1:]
    return middle[:at] + middle[at + rng.randrange(3, 10):]


def flanks_are_unique(entry):
    return entry.sequence.count(entry.left) == 1 and entry.sequence.count(entry.right) == 1


def made_domain(rng, number):
    """The domain with this number, from 0."""
    place = number % DOMAINS_PER_HUNDRED
    type_, strand = ("SomaticDNA", "R1R2")
    if place % 7 == 3:
        type_, strand = ("germline_RNA", "R1")
    elif place % 7 == 5:
        type_, strand = ("fusion_RNA", "R2")
    name = f"Locus{number + 1:05}"
    # A middle of 20 stays long enough for a core of 31 when nine of its bases are deleted.
    middle = bases(rng, rng.randrange(20, 31))
    if place == DOMAINS_PER_HUNDRED - 1:
        middle = "R" + middle[1:]
    left, right = bases(rng, FLANK_BASES), bases(rng, FLANK_BASES)
    before = (SEQUENCE_BASES - len(middle)) // 2 - FLANK_BASES
    outer = bases(rng, before), bases(rng, before)
    middles = [middle]
    wanted = 2 if place % 7 == 6 else 3
    while len(middles) < wanted:
        other = mutated(rng, middle)
        if other not in middles:
            middles.append(other)
    kinds = ["wt", "m1", "m2"]
    entries = [Entry(f"{name}_{kind}", left, right, strand,
                     outer[0] + left + each + right + outer[1])
               for kind, each in zip(kinds, middles)]
    return Domain(name, type_, entries)


def made_catalogue(entry_count):
    if entry_count <= 0 or entry_count % 100 != 0:
        raise ValueError("the number of entries is no multiple of 100")
    rng = random.Random(SEED)
    domains = []
    while len(domains) < entry_count // 100 * DOMAINS_PER_HUNDRED:
        domain = made_domain(rng, len(domains))
        if all(map(flanks_are_unique, domain.entries)):
            domains.append(domain)
    return domains


def definition_text(domains):
    lines = ["/ Made-up sequences for measuring."]
    for domain in domains:
        lines.append(f"*{domain.name} {domain.type}")
        for entry in domain.entries:
            lines.append(f">{entry.name} {entry.left} {entry.right} {entry.strand} "
                         "0.001 0.0001 0.05 1000")
            lines.append(entry.sequence)
    return "\n".join(lines + ["//EntryEnds", ""])


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    sys.stdout.write(definition_text(made_catalogue(int(sys.argv[1]))))


if __name__ == "__main__":
    main()
