#!/usr/bin/env python3
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""Holds the records of runs of many ends against docs/formats/run-record.schema.json and json.md.

The schema must fit all of them, name every key that they hold, and name no key that none of them holds.

Usage: check_run_records.py VEXTA SCHEMA PAGE SAMPLE_RUN
"""
import copy
import gzip
import json
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import time

try:
    from jsonschema import Draft202012Validator
except ImportError:
    sys.exit("check_run_records: needs python3-jsonschema (scripts/install-dependencies test)")


def check(condition, *what):
    if not condition:
        sys.exit("check_run_records: " + " ".join(map(str, what)))


class Laboratory:
    """Folders of reads made of the sample run, and runs over them."""

    def __init__(self, vexta, sample_run, directory):
        self.vexta = vexta
        self.sample_run = pathlib.Path(sample_run)
        self.directory = directory
        self.commands = directory / "bin"
        self.commands.mkdir()
        self.environment = {"PATH": f"{self.commands}:{os.environ['PATH']}", "HOME": str(directory),
                            "XDG_CONFIG_HOME": str(directory / "config"), "LC_ALL": "C.UTF-8"}

    def folder(self, name):
        folder = self.directory / name
        folder.mkdir()
        return folder

    def reads(self, sample, read):
        """The text of one file of the sample run."""
        path = next(self.sample_run.glob(f"{sample}_*_{read}_001.fastq*"))
        data = path.read_bytes()
        return gzip.decompress(data) if path.suffix == ".gz" else data

    def write(self, folder, prefix, read1, read2, ending=".fastq"):
        (folder / f"{prefix}_R1_001{ending}").write_bytes(read1)
        (folder / f"{prefix}_R2_001{ending}").write_bytes(read2)
        return folder / f"{prefix}_R1_001{ending}"

    def gunzip(self, script):
        """The gunzip that working copies are made with."""
        path = self.commands / "gunzip"
        path.write_text("#!/bin/sh\n" + script + '\nexec /bin/gunzip "$@"\n', encoding="utf-8")
        path.chmod(0o700)

    def command(self, command, *arguments):
        save = self.directory / "run.vexta"
        outputs = [save, self.directory / "run.json", self.directory / "run.vexta.record.json"]
        for output in outputs:
            output.unlink(missing_ok=True)
        return [self.vexta, command, "--save", save, "--json", outputs[1], *arguments]

    def records(self, status, expected):
        """The records that the last run wrote, in both places."""
        check(status == expected, "the run ended with", status, "and not with", expected)
        record = json.loads((self.directory / "run.json").read_text(encoding="utf-8"))
        beside = self.directory / "run.vexta.record.json"
        if not record["summaryForEachPatientMutAr"]:
            return {"run": record["run"]}
        written = json.loads(beside.read_text(encoding="utf-8"))
        check(written["run"] == record["run"], beside, "differs")
        return written

    def run(self, expected, command, *arguments):
        finished = subprocess.run(self.command(command, *arguments), env=self.environment,
                                  stderr=subprocess.DEVNULL, check=False)
        return self.records(finished.returncode, expected)

    def interrupted(self, *arguments):
        """A run that is interrupted while its first gunzip waits."""
        self.gunzip(f"touch {self.directory}/waits; while [ ! -e {self.directory}/goes ]; do sleep 0.01; done")
        process = subprocess.Popen(self.command("analyze-all", *arguments), env=self.environment,
                                   stderr=subprocess.DEVNULL)
        while not (self.directory / "waits").exists():
            check(process.poll() is None, "the run ended before gunzip began")
            time.sleep(0.01)
        process.send_signal(signal.SIGINT)
        (self.directory / "goes").touch()
        return self.records(process.wait(), 130)


def all_records(laboratory):
    """A record of each kind of run, by name."""
    sample = {(name, read): laboratory.reads(name, read) for name in ("DemoA", "DemoC") for read in ("R1", "R2")}
    reads1, reads2 = sample["DemoA", "R1"], sample["DemoA", "R2"]
    small1, small2 = sample["DemoC", "R1"], sample["DemoC", "R2"]
    records = {"sample run": laboratory.run(0, "analyze-all", laboratory.sample_run)}

    failed = laboratory.folder("failed")
    laboratory.write(failed, "A_S1_L001", small1, small2)
    broken = laboratory.write(failed, "B_S2_L001", b"no gzip data", b"nor this", ".fastq.gz")
    laboratory.write(failed, "C_S3_L002", small1, small2)
    records["a failed patient"] = laboratory.run(1, "analyze-all", failed)
    records["a failed single run"] = laboratory.run(1, "analyze", broken)

    lanes = laboratory.folder("lanes")
    laboratory.write(lanes, "A_S1_L001", small1, small2)
    laboratory.write(lanes, "A_S1_L002", small1, small2)
    (lanes / "B_S2_L001_R2_001.fastq").write_bytes(small2)
    records["several lanes, and a file without mate"] = laboratory.run(
        0, "analyze-all", "--lanes", "all", "--skip-unpaired", lanes)

    doubtful = laboratory.folder("doubtful")
    lines = reads1.split(b"\n")
    laboratory.write(doubtful, "Line_S1_L001", b"\n".join(lines[:4000] + [b""] + lines[4000:]), reads2)
    hole = small1.index(b"\n@", 30000) + 1
    laboratory.write(doubtful, "Torn_S2_L001", small1[:hole] + bytes(4096) + small1[hole + 4096:], small2)
    laboratory.write(doubtful, "NTC_S3_L001", b"", b"")
    laboratory.write(doubtful, "Turned_S4_L001", reads2, reads1)
    laboratory.write(doubtful, "Cut_S5_L001", small1, small2[:30000])
    records["early ends and a second look"] = laboratory.run(
        1, "analyze-all", "--strict", "--set", "nD1Threshold=50", "--threads", "3", doubtful)

    stopped = laboratory.folder("stopped")
    for prefix in ("A_S1_L001", "B_S2_L001", "C_S3_L001"):
        laboratory.write(stopped, prefix, gzip.compress(small1), gzip.compress(small2), ".fastq.gz")
    records["an interrupted batch"] = laboratory.interrupted("--working-copies", stopped)
    catalogue = laboratory.directory / "panel.txt"
    catalogue.write_bytes((laboratory.sample_run / "../../resources/ReferenceNucleotideSequence.txt").read_bytes())
    laboratory.gunzip(f"echo '/ edited' >>{catalogue}")
    records["a changed catalogue"] = laboratory.run(
        1, "analyze-all", "--working-copies", "--catalogue", catalogue, stopped)
    return records


class Schema:
    def __init__(self, schema):
        Draft202012Validator.check_schema(schema)
        self.validator = Draft202012Validator(schema)
        self.root = schema
        self.met = set()

    def errors(self, record):
        return [f"{error.json_path}: {error.message}" for error in self.validator.iter_errors(record)]

    def resolved(self, schema):
        while "$ref" in schema:
            schema = self.root["$defs"][schema["$ref"].rpartition("/")[2]]
        return schema

    def keys(self, schema, path=()):
        """The path of every key that the schema names."""
        schema = self.resolved(schema)
        if "items" in schema:
            return self.keys(schema["items"], path)
        found = set()
        for key, value in schema.get("properties", {}).items():
            found |= {path + (key,)} | self.keys(value, path + (key,))
        return found


def keys_of(value, path=()):
    """The path of every key in a record; the items of an array have its path."""
    if isinstance(value, list):
        return set().union(*(keys_of(item, path) for item in value))
    if not isinstance(value, dict):
        return set()
    return set().union(*({path + (key,)} | keys_of(item, path + (key,)) for key, item in value.items()))


def objects_of(value):
    if isinstance(value, dict):
        yield value
    for item in value.values() if isinstance(value, dict) else value if isinstance(value, list) else ():
        yield from objects_of(item)


def check_that_it_refuses(schema, record):
    """A schema that fits everything would prove nothing: it must miss each key, and see a wrong value."""
    record = copy.deepcopy(record)
    for each in objects_of(record):
        for key, value in list(each.items()):
            each[key] = {"wrong": "kind"} if not isinstance(value, dict) else "wrong kind"
            check(schema.errors(record), "the schema takes any value of", key)
            del each[key]
            is_optional = key in ("secondLook", "documentSha256", "recordSha256") or (key == "settings" and "pairs" in each)
            check(is_optional or schema.errors(record), "the schema does not miss", key)
            each[key] = value
    check(not schema.errors(record), schema.errors(record))


def words_of(records, path):
    """Every text that stands at the path."""
    values = list(records.values())
    for key in path:
        values = [value[key] for value in values if isinstance(value, dict) and key in value]
        values = [item for value in values for item in (value if isinstance(value, list) else [value])]
    return set(values)


def main():
    vexta, schema_path, page, sample_run = sys.argv[1:]
    schema = Schema(json.loads(pathlib.Path(schema_path).read_text(encoding="utf-8")))
    with tempfile.TemporaryDirectory() as directory:
        records = all_records(Laboratory(vexta, sample_run, pathlib.Path(directory)))

    for name, record in records.items():
        check(not schema.errors(record), f"{name}:", *schema.errors(record))
    named, met = schema.keys(schema.root), keys_of(list(records.values()))
    check(met <= named, "not in the schema:", sorted(met - named))
    check(named <= met, "in no record:", sorted(named - met))
    check_that_it_refuses(schema, records["sample run"])

    explained = set(re.findall(r"`([^`]+)`", pathlib.Path(page).read_text(encoding="utf-8")))
    keys = {path[-1] for path in named if "settings" not in path or path[-1] == "settings" or path[-1] in ("value", "from")}
    check(keys <= explained, page, "does not name", sorted(keys - explained))

    patients = ("run", "patients")
    for path, expected in {
            (*patients, "outcome"): {"analysed", "failed", "cancelled", "skipped"},
            (*patients, "inputs", "read1", "end"): {"end of file", "empty line", "zero byte"},
            (*patients, "secondLook", "found", "place"): {"other strand of the other read"},
            ("run", "inputMode"): {"direct", "working copies"},
            ("run", "settings", "nD1Threshold", "from"): {"first-run value", "settings file", "--set"}}.items():
        check(expected <= words_of(records, path), path, "was only", words_of(records, path))


if __name__ == "__main__":
    main()
