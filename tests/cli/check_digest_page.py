#!/usr/bin/env python3
# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""Compares `vexta digest` and the digests of records with the Python program of docs/formats/json.md.

Usage: check_digest_page.py VEXTA PAGE SAMPLE_RUN WRITER, where WRITER FILE writes an awkward document.
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile


def check(condition, *what):
    if not condition:
        sys.exit("check_digest_page: " + " ".join(map(str, what)))


def program_of(page):
    found = re.findall(r"^```python\n(.*?)^```$", page.read_text(encoding="utf-8"), re.S | re.M)
    check(len(found) == 1, page, "holds", len(found), "programs")
    return found[0]


class Comparison:
    def __init__(self, vexta, program, directory):
        self.vexta = vexta
        self.program = program
        self.environment = {"PATH": os.environ["PATH"], "HOME": str(directory), "LC_ALL": "C.UTF-8",
                            "XDG_CONFIG_HOME": str(directory / "config")}

    def run(self, *command, **options):
        return subprocess.run(command, check=True, stdout=subprocess.PIPE, env=self.environment, **options).stdout

    def compare(self, document):
        shown = self.run(self.vexta, "show", "--json", "-", document, stderr=subprocess.DEVNULL)
        of_page = self.run(sys.executable, self.program, input=shown).decode().splitlines()
        printed = self.run(self.vexta, "digest", document).decode()
        check(printed == f"{of_page[0]}  {document}\n", document, "has", printed, "and by the page", of_page[0])
        patients = json.loads(shown)["summaryForEachPatientMutAr"]
        check(len(of_page) == 1 + len(patients), of_page)
        return [line.split()[0] for line in of_page]


def main():
    vexta, page, sample_run, writer = sys.argv[1:]
    with tempfile.TemporaryDirectory() as name:
        directory = pathlib.Path(name)
        program = directory / "digest.py"
        program.write_text(program_of(pathlib.Path(page)), encoding="utf-8")
        comparison = Comparison(vexta, program, directory)

        run = directory / "run.vexta"
        comparison.run(vexta, "analyze-all", "--quiet", "--save", run, sample_run, stderr=subprocess.DEVNULL)
        of_page = comparison.compare(run)
        record = json.loads((directory / "run.vexta.record.json").read_text(encoding="utf-8"))["run"]
        of_record = [record["resultDigest"]] + [patient["resultDigest"] for patient in record["patients"]]
        check(of_page == of_record, "the record has", of_record, "and the page", of_page)

        awkward = directory / "awkward.vexta"
        comparison.run(writer, awkward)
        comparison.compare(awkward)


if __name__ == "__main__":
    main()
