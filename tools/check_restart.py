#!/usr/bin/python3
"""Checks that runs of the solver which were stopped and continued end like uninterrupted ones.

    check_restart.py [--solver PROGRAM] [PROJECT...]      stops at 10, 50 and 90 %, and 10 times in one run
    check_restart.py --stop N [PROJECT...]                stops N times in one run instead
    check_restart.py --kill N [PROJECT...]                kills the run N times at random instead
    check_restart.py --duration T                         cuts the projects to T days

Without projects it takes those in examples/. A stop is SIGTERM, as batch systems send it. The continued run
must have the output times of the uninterrupted one, none missing and none twice, and values within 10 times
the tolerance, or within the exactness of the uninterrupted run where that is less exact: the steps behind a
stop are others. The exactness is the difference from a run with a tenth of the tolerance; time integrals hold
whole steps, so they may differ by one more. Works on copies.
"""

import argparse
import glob
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
import plot_output  # noqa: E402

FACTOR = 10.0  # allowed difference in tolerances
SECONDS = {"s": 1.0, "min": 60.0, "h": 3600.0, "d": 86400.0, "a": 31536000.0}


class Failure(Exception):
    """What does not hold; the text is for the user."""


class Project:
    """A copy of a project in a folder of its own."""

    def __init__(self, source, folder, solver, days=None, exact=1.0):
        shutil.copytree(os.path.dirname(source), folder, ignore=shutil.ignore_patterns("*.results", "*.vel.*"))
        self.file = os.path.join(folder, os.path.basename(source))
        self.results = self.file[: -len(".vel")] + ".results"
        self.solver = solver
        with open(self.file, encoding="utf-8") as stream:
            text = stream.read()
        if days is not None and self.number(text, "DURATION") > 86400.0 * days:
            text = re.sub(r"(?m)^\s*DURATION\s*=.*$", f"DURATION = {days:g} d", text, count=1)
            with open(self.file, "w", encoding="utf-8") as stream:
                stream.write(text)
        if exact != 1.0:
            finer = self.number(text, "REL_TOL", 1e-5) * exact
            text = re.sub(r"(?m)^\s*REL_TOL\s*=.*\n", "", text)
            head = "[CVODE_SOLVER_SETTINGS]\n"
            text = text.replace(head, f"{head}REL_TOL = {finer:g}\n", 1)
            with open(self.file, "w", encoding="utf-8") as stream:
                stream.write(text)
        self.duration = self.number(text, "DURATION")
        self.tolerance = self.number(text, "REL_TOL", 1e-5)
        self.longest_step = self.number(text, "MAX_DT", 1800.0)

    @staticmethod
    def number(text, keyword, default=None):
        """A number of the project in SI units; only units of time are known."""
        found = re.search(rf"(?m)^\s*{keyword}\s*=\s*(\S+)[ \t]*(\w*)", text)
        if not found:
            return default
        return float(found.group(1)) * SECONDS.get(found.group(2), 1.0)

    def start(self, *options):
        command = [self.solver, "-x", "-v0", *options, self.file]
        return subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)

    def run(self, *options):
        process = self.start(*options)
        _, error = process.communicate()
        if process.returncode != 0:
            raise Failure(f"exit code {process.returncode}: {error.strip()}")

    def reached(self):
        """Time of the restart file [s], or -1."""
        try:
            with open(os.path.join(self.results, "restart.txt"), encoding="ascii") as stream:
                return float(stream.readline())
        except (OSError, ValueError):
            return -1.0

    def has_restart_file(self):
        """Brings the backup into place where the run was killed between two renames."""
        file = os.path.join(self.results, "restart.txt")
        if not os.path.exists(file) and os.path.exists(file + ".backup"):
            os.rename(file + ".backup", file)
        return os.path.exists(file)

    def run_until(self, target, *options):
        """Runs until the restart file has reached `target` [s] and stops the run then."""
        process = self.start(*options)
        while process.poll() is None and self.reached() < target:
            time.sleep(0.001)
        process.send_signal(signal.SIGTERM)
        _, error = process.communicate()
        stopped = process.returncode == 1 and "Aborting solver..." in error
        if not stopped and process.returncode not in (0, -signal.SIGTERM):
            raise Failure(f"exit code {process.returncode} after SIGTERM: {error.strip()}")

    def outputs(self):
        """The output files by name."""
        names = sorted(os.listdir(self.results))
        paths = [os.path.join(self.results, name) for name in names]
        return {os.path.basename(path): plot_output.read_output(path) for path in paths if plot_output.is_output_file(path)}


def scale(output):
    """What the tolerance of a file is relative to: temperatures count from 0 K, fluxes follow from differences of
    about 1 K, all else counts by its largest value."""
    largest = max(abs(value) for values in output.values for value in values)
    if not output.is_field:
        return 300.0 * largest
    return largest + 273.15 if output.header["VALUE_UNIT"] == "C" else largest


def check_times(whole, parts):
    if set(whole) != set(parts):
        raise Failure(f"output files {sorted(set(whole) ^ set(parts))}")
    for name, expected in whole.items():
        actual = parts[name].times
        if actual != expected.times:
            missing = sorted(set(expected.times) - set(actual))
            extra = len(actual) - len(set(actual) & set(expected.times))
            raise Failure(f"{name}: {len(missing)} output times are missing {missing[:3]}, {extra} too many")


def differences(project, whole, parts):
    """The largest difference of each output file in tolerances."""
    result = {}
    for name, expected in whole.items():
        pairs = zip(sum(expected.values, []), sum(parts[name].values, []))
        worst = max(abs(one - other) for one, other in pairs)
        result[name] = worst / (project.tolerance * scale(expected)) if worst else 0.0
    return result


def overshoot(project, output):
    """What one step of the integrator adds to a time integral: records hold the whole step around their time."""
    if output.header["TIME_TYPE"] != "INTEGRAL":
        return 0.0
    days, _ = output.days()
    rates = [
        abs(b - a) / (86400.0 * (days[i + 1] - days[i]))
        for i in range(len(days) - 1)
        for a, b in zip(output.values[i], output.values[i + 1])
    ]
    return 2.0 * max(rates, default=0.0) * project.longest_step / (project.tolerance * scale(output))


def compare(project, whole, parts, exactness):
    """The largest difference in units of what is allowed. Raises Failure where times or values do not fit."""
    check_times(whole, parts)
    largest = 0.0
    for name, worst in differences(project, whole, parts).items():
        allowed = max(FACTOR, 2.0 * exactness[name]) + overshoot(project, whole[name])
        if worst > allowed:
            raise Failure(f"{name}: differs by {worst:.3g} tolerances, {allowed:.3g} are allowed")
        largest = max(largest, worst / allowed)
    return largest


def stop_and_continue(project, fractions):
    for index, fraction in enumerate(fractions):
        project.run_until(fraction * project.duration, *(["--restart"] if index else []))
    project.run("--restart")


def kill_and_continue(project, count, seconds, chance):
    """Kills a run of `seconds` at `count` random times; what was reached before a kill stays. Returns how often
    the backup had to be taken."""
    options, backups = [], 0
    for _ in range(count):
        process = project.start(*options)
        time.sleep(chance.uniform(0.0, seconds))
        process.kill()
        process.communicate()
        backups += not os.path.exists(os.path.join(project.results, "restart.txt"))
        # before the first output time there is nothing to continue; an ended run begins anew
        fresh = process.returncode == 0 and chance.random() < 0.5
        options = ["--restart"] if project.has_restart_file() and not fresh else []
    project.run(*options)
    return backups


def check(source, arguments, folder, solver):
    name = os.path.splitext(os.path.basename(source))[0]

    def copy(label, exact=1.0):
        return Project(source, os.path.join(folder, f"{name}_{label}"), solver, arguments.duration, exact)

    reference = copy("whole")
    begin = time.monotonic()
    reference.run()
    seconds = time.monotonic() - begin
    whole = reference.outputs()
    finer = copy("finer", 0.1)
    finer.run()
    exactness = differences(reference, whole, finer.outputs())
    if arguments.kill:
        cases = {f"killed {arguments.kill} times": None}
    elif arguments.stop:
        cases = {f"stopped {arguments.stop} times": [(k + 1) / (arguments.stop + 1) for k in range(arguments.stop)]}
    else:
        cases = {f"stopped at {100 * f:.0f} %": [f] for f in (0.1, 0.5, 0.9)}
        cases["stopped 10 times"] = [k / 11 for k in range(1, 11)]
    for label, fractions in cases.items():
        project = copy(label.replace(" ", "_"))
        try:
            if fractions is None:
                chance = random.Random(arguments.seed)
                kill_and_continue(project, arguments.kill, seconds, chance)
            else:
                stop_and_continue(project, fractions)
            worst = compare(project, whole, project.outputs(), exactness)
        except (Failure, plot_output.OutputError) as failure:
            raise Failure(f"{name}, {label}: {failure}") from failure
        print(f"{name}, {label}: {100 * worst:.0f} % of the allowed difference", flush=True)


def main(arguments=None):
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("projects", nargs="*", metavar="PROJECT", help="project files, default: all examples")
    parser.add_argument("--solver", default=os.path.join(ROOT, "build", "release", "bin", "solver"))
    parser.add_argument("--duration", type=float, metavar="T", help="cut longer projects to T days")
    parser.add_argument("--stop", type=int, default=0, metavar="N", help="stop N times in one run only")
    parser.add_argument("--kill", type=int, default=0, metavar="N", help="kill at N random times")
    parser.add_argument("--seed", type=int, default=1, help="of the random times")
    options = parser.parse_args(arguments)
    if not options.projects:
        options.projects = sorted(glob.glob(os.path.join(ROOT, "examples", "**", "*.vel"), recursive=True))
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        for source in options.projects:
            try:
                check(os.path.abspath(source), options, folder, os.path.abspath(options.solver))
            except Failure as failure:
                print(f"FAILED: {failure}", file=sys.stderr, flush=True)
                failures += 1
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
