# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""Measuring commands against each other with hyperfine.

Commands of a group run in rounds: each round is one call of hyperfine that runs each command once.
A ratio is taken within a round, and the median of the rounds counts, so that a machine which is
slower for a while is slower for both sides.
"""
import json
import shutil
import statistics
import subprocess
import tempfile
from dataclasses import dataclass
from pathlib import Path


class CommandFailed(Exception):
    pass


@dataclass
class Command:
    name: str
    line: str
    # Runs before the command and is not measured.
    prepare: str = "true"
    # The foreign program without which the command is left out.
    tool: str = ""

    def available(self):
        return not self.tool or shutil.which(self.tool) is not None


@dataclass
class Group:
    name: str
    rounds: int
    commands: list


@dataclass
class Times:
    """What the rounds of one command took, in seconds."""
    wall: list
    cpu: list


class Rounds:
    """The times of all groups: `times[group][command]`; a command that could not run is absent."""

    def __init__(self, directory):
        self._directory = directory
        self.times = {}
        self.failures = []

    def measure(self, group):
        commands = [command for command in group.commands if command.available()]
        times = {command.name: Times([], []) for command in commands}
        for _ in range(group.rounds):
            for command, result in zip(commands, self._round(commands)):
                if result["exit_codes"] != [0]:
                    self._fail(command, result["exit_codes"])
                    del times[command.name]
                    continue
                times[command.name].wall.append(result["times"][0])
                times[command.name].cpu.append(result["user"] + result["system"])
            commands = [command for command in commands if command.name in times]
        self.times[group.name] = times

    def ratios(self, group, numerator, denominator, scale=1.0):
        """The rounds' ratios, or nothing when a side is absent."""
        times = self.times[group]
        if numerator not in times or denominator not in times:
            return []
        pairs = zip(times[numerator].wall, times[denominator].wall)
        return [scale * above / below for above, below in pairs]

    def _round(self, commands):
        with tempfile.TemporaryDirectory() as scratch:
            export = Path(scratch) / "round.json"
            call = ["hyperfine", "--runs", "1", "--style", "none", "--ignore-failure",
                    "--export-json", str(export)]
            for command in commands:
                call += ["--prepare", command.prepare, "--command-name", command.name, command.line]
            done = subprocess.run(call, cwd=self._directory, text=True, stdout=subprocess.PIPE,
                                  stderr=subprocess.STDOUT, check=False)
            if done.returncode != 0:
                raise CommandFailed(f"hyperfine failed:\n{done.stdout}")
            return json.loads(export.read_text())["results"]

    def _fail(self, command, status):
        """A foreign tool that fails costs its row; one of ours ends the comparison."""
        if not command.tool:
            raise CommandFailed(f"status {status}: {command.line}")
        self.failures.append(command.name)


def spread(values, digits=2):
    """Median, and least to greatest in brackets when there are several values."""
    text = f"{statistics.median(values):.{digits}f}"
    if len(values) == 1:
        return text
    return f"{text} ({min(values):.{digits}f}-{max(values):.{digits}f})"
