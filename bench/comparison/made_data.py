# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""The files that are measured on, in a directory of their own."""
import fcntl
import hashlib
import json
import os
import shutil
import subprocess
from pathlib import Path

from comparison.made_catalogue import definition_text, made_catalogue

SOURCE = Path(__file__).resolve().parent.parent
MAKERS = ["made_reads.cpp", "made_genome.h", "sequencer.h", "comparison/made_catalogue.py",
          "comparison/made_data.py"]
# As the software of sequencers packs: smaller levels unpack slower, greater ones pack slower.
GZIP_LEVEL = "-4"
# Plain reads with their packed, halved and copied forms, measured and rounded up.
BYTES_PER_PAIR = 3500


class DataError(Exception):
    pass


class MadeData:
    """Read pairs of catalogues with 100, 1,000 and 10,000 entries, made when they are not there.

    Prefixes of the pairs of files: "reads" (all pairs, 100 entries), "packed" (the same as .gz),
    "half" and "part" (their first half and sixteenth), "k1" and "k10" (as many as in "half", with
    1,000 and 10,000 entries). Reads and catalogues are the same whenever they are made.
    """

    def __init__(self, base, pairs, maker):
        self.directory = Path(base).resolve() / "vexta-compare"
        self.pairs = {"reads": pairs, "packed": pairs, "half": pairs // 2, "part": pairs // 16,
                      "k1": pairs // 2, "k10": pairs // 2}
        self._maker = maker
        # Working copies find their files by the first "_R1" of the whole path.
        if "_R1" in str(self.directory):
            raise DataError(f"{self.directory}: the path must not hold _R1")
        self._take_directory()

    def _take_directory(self):
        self.directory.mkdir(mode=0o700, parents=True, exist_ok=True)
        if self.directory.is_symlink() or self.directory.stat().st_uid != os.getuid():
            raise DataError(f"{self.directory} is not ours")
        self._lock = open(self.directory / "lock", "w")
        try:
            fcntl.flock(self._lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except OSError:
            raise DataError(f"{self.directory} is in use by another comparison") from None

    def remove(self):
        shutil.rmtree(self.directory)

    def make(self):
        """Makes what is missing; all of it when anything was made in another way."""
        wanted = self._parameters()
        marker = self.directory / "parameters.json"
        if marker.exists() and marker.read_text() == wanted:
            return False
        self._check_space()
        for entry in self.directory.iterdir():
            if entry.name != "lock":
                shutil.rmtree(entry) if entry.is_dir() else entry.unlink()
        self._make_catalogues()
        self._make_reads()
        marker.write_text(wanted)
        return True

    def warm(self):
        """Reads every file once, so that all are measured from the page cache."""
        for path in sorted(self.directory.glob("*.fastq*")):
            with open(path, "rb", buffering=0) as file:
                while file.read(1 << 20):
                    pass

    def _parameters(self):
        digest = hashlib.sha256()
        for name in MAKERS:
            digest.update((SOURCE / name).read_bytes())
        return json.dumps({"pairs": self.pairs["reads"], "makers": digest.hexdigest()})

    def _check_space(self):
        needed = self.pairs["reads"] * BYTES_PER_PAIR
        free = shutil.disk_usage(self.directory).free
        if free < needed:
            raise DataError(f"{self.directory}: {needed >> 20} MB are needed, "
                            f"{free >> 20} are free")

    def _make_catalogues(self):
        for name, entries in (("c100", 100), ("c1000", 1000), ("c10000", 10000)):
            domains = made_catalogue(entries)
            (self.directory / f"{name}.txt").write_text(definition_text(domains))
            if entries == 100:
                self._write_search_inputs([each for domain in domains for each in domain.entries])

    def _write_search_inputs(self, entries):
        """The same targets for other tools, which know no ambiguity codes: searchers of fixed texts
        get the cores without one, as they lie in read 1 and in read 2; aligners get a base."""
        cores = [entry.core() for entry in entries if set(entry.core()) <= set("ACGT")]
        turned = [core[::-1].translate(str.maketrans("ACGT", "TGCA")) for core in cores]
        (self.directory / "cores1.txt").write_text("\n".join(cores) + "\n")
        (self.directory / "cores2.txt").write_text("\n".join(turned) + "\n")
        fasta = "".join(f">{each.name}\n{each.sequence.replace('R', 'A')}\n" for each in entries)
        (self.directory / "targets.fasta").write_text(fasta)

    def _make_reads(self):
        made = [("reads", "c100"), ("half", "c100"), ("part", "c100"), ("k1", "c1000"),
                ("k10", "c10000")]
        self._run_two_at_once([[str(self._maker), f"{catalogue}.txt", str(self.pairs[name]), name]
                               for name, catalogue in made])
        self._run_two_at_once([["sh", "-c", f"gzip {GZIP_LEVEL} -c {files('reads', read)} "
                                f">{files('packed', read)}"] for read in (1, 2)])

    def _run_two_at_once(self, commands):
        for at in range(0, len(commands), 2):
            running = [subprocess.Popen(command, cwd=self.directory)
                       for command in commands[at:at + 2]]
            statuses = [process.wait() for process in running]
            if any(statuses):
                raise DataError(f"could not make the data: {commands[at:at + 2]}")


def files(prefix, read):
    """The name of one file of a pair of files."""
    ending = ".fastq.gz" if prefix == "packed" else ".fastq"
    return f"{prefix}_S1_L001_R{read}_001{ending}"
