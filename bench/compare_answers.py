#!/usr/bin/env python3
"""Runs the examples and benchmarks with the band matrix and with the default linear solver and compares all of
their outputs, record by record, and their steps.

    bench/compare_answers.py [--solver build/release/bin/solver] [--markdown] [project.vel ...]
    bench/compare_answers.py --duration corner=5     cuts a project to so many days; * stands for all
    bench/compare_answers.py --tolerance 0.1         with so many times the tolerances of the projects
    bench/compare_answers.py --cases                 the joints of compare_solvers.py instead of the examples

Both must have the same output times. Allowed are differences of 5e-3 K in temperatures, 5e-4 of the value in water
contents, and 10 % in the number of steps. Other quantities are shown as parts of the largest value of their file.
Works on copies.

Both runs have the error that their tolerance allows, and the least rounding gives it other signs: where it is larger
than what is allowed here, only a smaller tolerance shows whether both are on the way to the same answer.
"""

import argparse
import math
import re
import shutil
import sys
import tempfile
from dataclasses import dataclass
from pathlib import Path

import compare_solvers
from measure import run
from projects import ROOT, CapillaryWall, Case, directories

sys.path.insert(0, str(ROOT / "tools"))
import plot_output  # noqa: E402

METHODS = ("BAND", "AUTO")
SECONDS = {"s": 1.0, "min": 60.0, "h": 3600.0, "d": 86400.0, "a": 31536000.0}
TEMPERATURE_LIMIT = 5e-3  # [K]
WATER_LIMIT = 5e-4  # of the value
STEP_LIMIT = 0.1


@dataclass
class Difference:
    """Of an output: kind is K, water or other."""

    kind: str
    value: float
    file: str

    @property
    def share(self):
        """In units of what is allowed; 0 where nothing is said."""
        return self.value / {"K": TEMPERATURE_LIMIT, "water": WATER_LIMIT}.get(self.kind, float("inf"))


def prepared(text, method, days, tolerance):
    """The project text for a method: with step counts, all digits, `tolerance` times its relative tolerance, and cut
    to `days` unless that is None."""
    found = re.search(r"(?m)^\s*REL_TOL\s*=\s*(\S+)", text)
    relative = tolerance * float(found.group(1) if found else 1e-5)
    text = re.sub(r"(?m)^\s*REL_TOL\s*=.*\n", "", text)
    text = re.sub(r"(?m)^\s*(LINEAR_SOLVER|USE_MONITORS_FILE)\s*=.*\n", "", text)
    text = re.sub(r"(?m)^\s*PRECISION\s*=.*$", "PRECISION = 12", text)
    settings = f"[CVODE_SOLVER_SETTINGS]\nLINEAR_SOLVER = {method}\nUSE_MONITORS_FILE = YES\nREL_TOL = {relative:g}\n"
    text = text.replace("[CVODE_SOLVER_SETTINGS]\n", settings, 1)
    if settings not in text:
        text = text.replace("[INIT]\n", "[INIT]\n[SOLVER_SETTINGS]\n" + settings, 1)
    if days is not None and duration(text) > days:
        text = re.sub(r"(?m)^\s*DURATION\s*=.*$", f"DURATION = {days:g} d", text, count=1)
    return text + "\n" + directories()


def duration(text):
    """Of a project [d]."""
    found = re.search(r"(?m)^\s*DURATION\s*=\s*([0-9.eE+-]+)\s*(\w+)", text)
    return float(found.group(1)) * SECONDS[found.group(2)] / SECONDS["d"]


def compare_output(one, other):
    """The difference of two output files."""
    name = Path(one.path).name
    if one.times != other.times:
        raise RuntimeError(f"{name}: other output times")
    pairs = [pair for a, b in zip(one.values, other.values) for pair in zip(a, b)]
    if any(math.isnan(value) for pair in pairs for value in pair):
        raise RuntimeError(f"{name}: a value that is not a number")
    quantity = one.header.get("QUANTITY", "").lower()
    if one.header.get("VALUE_UNIT") in ("C", "K"):
        return Difference("K", max(abs(a - b) for a, b in pairs), name)
    if one.is_field and "moisture" in quantity and one.header.get("VALUE_UNIT", "").startswith("kg"):
        return Difference("water", max(abs(a - b) / abs(a) if a != b else 0.0 for a, b in pairs), name)
    size = max(abs(a) for a, _ in pairs)
    return Difference("other", max(abs(a - b) for a, b in pairs) / size if size > 0.0 else 0.0, name)


def read_outputs(results):
    """All output files of a run by name, but for those that have no record in a run that was cut."""
    outputs = {}
    for path in sorted(results.iterdir()):
        if plot_output.is_output_file(path):
            try:
                outputs[path.name] = plot_output.read_output(path)
            except plot_output.OutputError as error:
                if "no records" not in str(error):
                    raise
    return outputs


class Answers:
    """A project run both ways."""

    def __init__(self, name, source, solver, days, tolerance, folder):
        self.name = name
        self.costs, outputs = {}, {}
        text = source.read_text(encoding="utf-8")
        for method in METHODS:
            home = Path(folder) / f"{source.stem}_{method}"
            shutil.copytree(source.parent, home, ignore=shutil.ignore_patterns("*.results", "*.png"))
            project = home / source.name
            project.write_text(prepared(text, method, days, tolerance), encoding="utf-8")
            self.days = duration(project.read_text(encoding="utf-8"))
            self.costs[method] = run(solver, project)
            outputs[method] = read_outputs(home / f"{source.stem}.results")
        if outputs["BAND"].keys() != outputs["AUTO"].keys():
            raise RuntimeError(f"{self.name}: other output files")
        self.cut = duration(text) > self.days
        self.differences = [compare_output(outputs["BAND"][file], outputs["AUTO"][file]) for file in outputs["BAND"]]

    def worst(self, kind):
        """The largest difference of a kind, or None."""
        return max((d for d in self.differences if d.kind == kind), key=lambda d: d.value, default=None)

    @property
    def step_change(self):
        return self.costs["AUTO"].steps / self.costs["BAND"].steps - 1.0

    @property
    def agree(self):
        return abs(self.step_change) <= STEP_LIMIT and all(d.share <= 1.0 for d in self.differences)

    def row(self):
        def cell(kind, unit):
            worst = self.worst(kind)
            return "-" if worst is None else f"{worst.value:.1e}{unit}"

        days = f"{self.days:.3g} d" + (", cut" if self.cut else "")
        band, auto = self.costs["BAND"], self.costs["AUTO"]
        return [f"`{self.name}`", days, cell("K", " K"), cell("water", ""), cell("other", ""),
                f"{band.steps} / {auto.steps}", f"{band.seconds:.2f} s", f"{auto.seconds:.2f} s"]


HEAD = ["Project", "Duration", "Temperature", "Water content", "Others", "Steps BAND / default", "BAND", "default"]


def find_projects():
    """The examples by name."""
    return {path.stem: path for path in sorted((ROOT / "examples").rglob("*.vel"))}


def write_cases(folder):
    """The joints of any size by name, each written into a folder of its own."""
    projects = {}
    for name, case in compare_solvers.CASES.items():
        if isinstance(case, (Case, CapillaryWall)):
            home = Path(folder) / name
            home.mkdir()
            projects[name] = case.write(home, "AUTO")
    return projects


def main(arguments=None):
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--solver", default=str(ROOT / "build/release/bin/solver"))
    parser.add_argument("--duration", action="append", default=[], metavar="NAME=DAYS")
    parser.add_argument("--tolerance", type=float, default=1.0, metavar="FACTOR")
    parser.add_argument("--markdown", action="store_true", help="print a table for docs/performance.md")
    parser.add_argument("--cases", action="store_true", help="the joints of compare_solvers.py")
    parser.add_argument("projects", nargs="*", type=Path)
    options = parser.parse_args(arguments)
    with tempfile.TemporaryDirectory() as folder:
        projects = write_cases(folder) if options.cases else {path.stem: path for path in options.projects}
        return 0 if compare_all(projects or find_projects(), options) else 1


def compare_all(projects, options):
    """Compares projects by name and tells the results. Returns whether all agree."""
    days = {name: float(value) for name, value in (word.split("=") for word in options.duration)}
    good = True
    if options.markdown:
        print("| " + " | ".join(HEAD) + " |\n|" + "---|" * len(HEAD))
    for name, source in projects.items():
        with tempfile.TemporaryDirectory() as folder:
            answers = Answers(name, source, options.solver, days.get(name, days.get("*")), options.tolerance, folder)
        good = good and answers.agree
        if options.markdown:
            print("| " + " | ".join(answers.row()) + " |", flush=True)
        else:
            print("  ".join(f"{cell:>14}" for cell in answers.row()), flush=True)
        for difference in answers.differences:
            if difference.share > 1.0:
                print(f"{answers.name}: {difference.file} differs by {difference.value:.2g}, "
                      f"{difference.share:.1f} times what is allowed", file=sys.stderr)
        if abs(answers.step_change) > STEP_LIMIT:
            print(f"{answers.name}: {100 * answers.step_change:+.0f} % steps", file=sys.stderr)
    return good


if __name__ == "__main__":
    sys.exit(main())
