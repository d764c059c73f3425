# SPDX-FileCopyrightText: The Vexta authors
# SPDX-License-Identifier: Apache-2.0
"""The measured part of docs/performance.md as text."""
import os
import platform
import re
import shutil
import statistics
import subprocess
from datetime import date
from pathlib import Path

from comparison.questions import MEMORY_BOUND_MB, all_questions, memory_commands
from comparison.rounds import spread

BEGIN = "<!-- measured: begin (bench/compare replaces what follows) -->"
END = "<!-- measured: end -->"
SOURCE = Path(__file__).resolve().parent.parent.parent
PACKAGES = ["hyperfine", "coreutils", "isal", "ripgrep", "kallisto", "salmon", "fastp", "g++"]


def number(value):
    digits = 2 if value < 10 else 1 if value < 100 else 0
    return f"{value:.{digits}f}"


def bound_text(question, value):
    if value is None:
        return ""
    return f"≤ {value:g}" if question.at_most else f"≥ {value:g}"


def reached(question, ratio):
    if question.bound is None:
        return ""
    within = ratio <= question.bound if question.at_most else ratio >= question.bound
    return "yes" if within else "no"


def ratio_row(question, ratios):
    to_reach, aim = bound_text(question, question.bound), bound_text(question, question.aim)
    if not ratios:
        missing = "not measured: a program is missing or failed"
        return f"| {question.text} | {missing} | {to_reach} | | {aim} |"
    ratio = statistics.median(ratios)
    shown = f"{number(ratio)} ({number(min(ratios))}-{number(max(ratios))})"
    if len(ratios) == 1:
        shown = number(ratio)
    if not question.at_most:
        shown += " times faster"
    return f"| {question.text} | {shown} | {to_reach} | {reached(question, ratio)} | {aim} |"


def memory_row(peaks):
    bounded = {name: peak for name, peak in peaks.items() if name != "10,000 entries"}
    greatest = max(bounded.values())
    verdict = "yes" if greatest <= MEMORY_BOUND_MB else "no"
    return (f"| peak memory, plain or .gz, all or half of the pairs | {greatest:.0f} MB | "
            f"≤ {MEMORY_BOUND_MB} MB | {verdict} | |")


def ratio_table(rounds, peaks, pairs):
    lines = ["| direct reading | measured | to reach | reached | aim beyond |",
             "|---|---|---|---|---|"]
    for question in all_questions(pairs):
        lines.append(ratio_row(question, rounds.ratios(question.group, question.numerator,
                                                       question.denominator, question.scale)))
    return lines + [memory_row(peaks)]


def raw_tables(rounds, groups, peaks, pairs):
    lines = []
    for group in groups:
        heading = f"group \"{group.name}\", rounds: {group.rounds}"
        lines += ["", f"| {heading} | wall, s | user + system, s |", "|---|---|---|"]
        for name, times in rounds.times[group.name].items():
            lines.append(f"| {name} | {spread(times.wall, 3)} | {spread(times.cpu, 3)} |")
    lines += ["", "| peak memory | MB |", "|---|---|"]
    lines += [f"| {name} | {peak:.1f} |" for name, peak in peaks.items()]
    return lines + ["", f"User and system time for each pair: {cpu_text(rounds, pairs)}"]


def cpu_text(rounds, pairs):
    parts = []
    for group, name, prefix in (("plain", "wc -l", "reads"), ("plain", "vexta", "reads"),
                                ("gz", "igzip -dc", "packed"), ("gz", "vexta, gz", "packed")):
        if name in rounds.times[group]:
            cpu = statistics.median(rounds.times[group][name].cpu)
            parts.append(f"`{name}` {cpu / pairs[prefix] * 1e6:.2f} µs")
    return ", ".join(parts) + "."


def command_list(groups):
    lines = ["```sh"]
    seen = set()
    for group in groups:
        lines.append(f"# {group.name}")
        for command in group.commands:
            if command.line not in seen:
                lines.append(command.line)
                seen.add(command.line)
    lines.append("# peak memory, each under GNU time")
    return lines + [*memory_commands().values(), "```"]


def first_match(path, pattern, otherwise):
    match = re.search(pattern, Path(path).read_text(), re.MULTILINE)
    return match.group(1) if match else otherwise


def machine_text():
    model = first_match("/proc/cpuinfo", r"^model name\s*: (.*)$", platform.machine())
    memory = int(first_match("/proc/meminfo", r"^MemTotal:\s+(\d+) kB", "0")) / (1 << 20)
    cores = ", ".join(map(str, sorted(os.sched_getaffinity(0))))
    return (f"{model}, {os.cpu_count()} processors, of which these were used: {cores}; "
            f"{memory:.0f} GB of memory; Linux {platform.release()}")


def output_of(command):
    done = subprocess.run(command, cwd=SOURCE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                          text=True, check=False)
    return done.stdout.strip() if done.returncode == 0 else ""


def version_text():
    vexta = output_of(["git", "describe", "--always", "--dirty"]) or "unknown"
    versions = [f"vexta at commit {vexta}"]
    if shutil.which("dpkg-query"):
        for package in PACKAGES:
            version = output_of(["dpkg-query", "-W", "-f", "${Version}", package])
            versions.append(f"{package} {version or 'not installed'}")
    return ", ".join(versions)


def conditions(pairs, load, failures):
    lines = [f"- {date.today().isoformat()}; {machine_text()}; load average before: {load:.2f}",
             f"- {version_text()}",
             f"- {pairs['reads']:,} pairs 2x150; {pairs['half']:,} in \"half\", \"k1\" and "
             f"\"k10\"; {pairs['part']:,} in \"part\""]
    if failures:
        lines.append(f"- failed: {', '.join(failures)}")
    return lines


def measured_part(rounds, groups, peaks, pairs, load):
    """All lines between the markers."""
    return "\n".join([
        *ratio_table(rounds, peaks, pairs), "",
        "Medians of the rounds' ratios, least and greatest in brackets.", "",
        "### Under which conditions", "",
        *conditions(pairs, load, rounds.failures), "",
        "### Raw figures", "",
        "Seconds: the median, least and greatest in brackets. They hold for this machine on that "
        "day only.",
        *raw_tables(rounds, groups, peaks, pairs), "",
        "### Commands", "",
        "In the directory of the data:", "",
        *command_list(groups)])


def replace_measured_part(page, part):
    """Puts the part between the markers of the page, whose other text is written by hand."""
    text = page.read_text()
    before, begin, rest = text.partition(BEGIN)
    _, end, after = rest.partition(END)
    if not begin or not end:
        raise ValueError(f"{page} lacks a marker")
    page.write_text(f"{before}{BEGIN}\n\n{part}\n\n{END}{after}")
