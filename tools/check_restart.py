#!/usr/bin/python3
"""Checks that runs of the solver which were stopped and continued end like uninterrupted ones.

    check_restart.py [--solver PROGRAM] [PROJECT...]      stops at 10, 50 and 90 %, and 10 times in one run
    check_restart.py --stop N [PROJECT...]                stops N times in one run instead
    check_restart.py --kill N [PROJECT...]                kills the run N times at random instead
    check_restart.py --duration T                         cuts the projects to T days
    check_restart.py --table                              all differences, file by file, as a table for documents

Without projects it takes those in examples/. A stop is SIGTERM, as batch systems send it; with strace the runs
are stopped at the same restart file each time, else when that file shows the time. Works on copies, whose output
files have all digits.

The continued run must have the output times of the uninterrupted one, none missing and none twice. Its values
are held against a much more exact run, the truth. The integrator controls the mean error of its steps, not the
error of each value; so an uninterrupted run itself can be many tolerances from the truth, and how many is chance:
with a tolerance that is a tenth larger or smaller it makes other steps, and so does a continued one. For each
output file the distance from the truth may be 10 tolerances, or twice that of the worst of five uninterrupted
runs, with the tolerance of the project, one and two tenths less and more. Both the largest distance of a value and the
root mean square over the records are held to that; what a stop adds shows in the second.
"""

import argparse
import glob
import math
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

FACTOR = 10.0  # allowed distance in tolerances
UNINTERRUPTED = 2.0  # the same in the distances of uninterrupted runs
TENTHS = (0.8, 0.9, 1.1, 1.2)  # their tolerances, in that of the project
CYCLE = 1.0 / FACTOR  # one more or less is allowed: it hangs on a threshold that is just passed, or just not
TRUTH = 0.01  # tolerance of the exact run in that of the project
SECONDS = {"s": 1.0, "min": 60.0, "h": 3600.0, "d": 86400.0, "a": 31536000.0}
TRACED = ["strace", "-f", "-e", "trace=rename"]


class Failure(Exception):
    """What does not hold; the text is for the user."""


def can_trace():
    return shutil.which("strace") and subprocess.run([*TRACED, "-o", "/dev/null", "true"], check=False).returncode == 0


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
        text = re.sub(r"(?m)^\s*PRECISION\s*=.*$", "PRECISION = 15", text)
        self.duration = self.number(text, "DURATION")
        self.tolerance = self.number(text, "REL_TOL", 1e-5)
        if exact != 1.0:
            text = re.sub(r"(?m)^\s*REL_TOL\s*=.*\n", "", text)
            head = "[CVODE_SOLVER_SETTINGS]\n"
            text = text.replace(head, f"{head}REL_TOL = {self.tolerance * exact:g}\n", 1)
        with open(self.file, "w", encoding="utf-8") as stream:
            stream.write(text)

    @staticmethod
    def number(text, keyword, default=None):
        """A number of the project in SI units; only units of time are known."""
        found = re.search(rf"(?m)^\s*{keyword}\s*=\s*(\S+)[ \t]*(\w*)", text)
        if not found:
            return default
        return float(found.group(1)) * SECONDS.get(found.group(2), 1.0)

    def start(self, *options, prefix=()):
        command = [*prefix, self.solver, "-x", "-v0", *options, self.file]
        return subprocess.Popen(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)

    def run(self, *options, prefix=()):
        process = self.start(*options, prefix=prefix)
        _, error = process.communicate()
        if process.returncode != 0:
            raise Failure(f"exit code {process.returncode}: {error.strip()}")

    def renames(self):
        """How often an uninterrupted run renames files; leaves its results."""
        trace = self.file + ".trace"
        self.run(prefix=[*TRACED, "-o", trace])
        with open(trace, encoding="utf-8", errors="replace") as stream:
            return sum("rename(" in line for line in stream)

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
        """Runs until the restart file has reached `target` [s] and stops the run then. False if it was over."""
        process = self.start(*options)
        while process.poll() is None and self.reached() < target:
            time.sleep(0.001)
        process.send_signal(signal.SIGTERM)
        return self.was_stopped(process)

    def run_up_to_rename(self, count, *options):
        """Runs until files have been renamed `count` times and stops the run then. False if it was over."""
        inject = f"inject=rename:signal=TERM:when={max(1, count)}"
        return self.was_stopped(self.start(*options, prefix=[*TRACED, "-e", inject, "-o", self.file + ".trace"]))

    def run_for(self, seconds):
        """Stops a run with next to no output times after some time, or sooner where it is over by then."""
        for _ in range(30):
            process = self.start()
            time.sleep(seconds)
            process.send_signal(signal.SIGTERM)
            if self.was_stopped(process):
                return self.has_restart_file()
            seconds *= 0.9 if process.returncode == 0 else 1.3
        return False

    @staticmethod
    def was_stopped(process):
        _, error = process.communicate()
        stopped = process.returncode == 1 and "Aborting solver..." in error
        if not stopped and process.returncode not in (0, -signal.SIGTERM):
            raise Failure(f"exit code {process.returncode} after SIGTERM: {error.strip()}")
        return stopped

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


def in_units(distance, unit):
    """Where all values are 0, nothing else is allowed."""
    return distance / unit if unit else math.inf if distance else 0.0


def distances(tolerance, expected, actual):
    """The largest distance of two runs in each output file, and its root mean square over the records, in
    tolerances. Both have the same output times."""
    result = {}
    for name, one in expected.items():
        unit = CYCLE if one.header["QUANTITY"] == "Freeze-Thaw-Cycles" else tolerance * scale(one)
        records = [
            max(in_units(abs(a - b), unit) for a, b in zip(values, others))
            for values, others in zip(one.values, actual[name].values)
        ]
        result[name] = max(records), math.sqrt(sum(d * d for d in records) / len(records))
    return result


def allowed(whole):
    """Allowed distances from the truth where uninterrupted runs have the distances `whole`."""
    return tuple(max(FACTOR, UNINTERRUPTED * distance) for distance in whole)


def check_distances(whole, parts):
    """The largest distance in units of what is allowed. Raises Failure where values do not fit."""
    share = 0.0
    for name, actual in parts.items():
        for word, value, limit in zip(("largest", "mean"), actual, allowed(whole[name])):
            if value > limit:
                raise Failure(f"{name}: {value:.3g} tolerances from the truth ({word}), {limit:.3g} are allowed")
            share = max(share, value / limit)
    return share


def stop_and_continue(project, fractions, seconds, renames=None):
    done, stops = 0.0, 0
    for index, fraction in enumerate(fractions):
        options = ["--restart"] if index else []
        if renames:
            count = round((fraction - done) * renames)
            stopped = project.run_up_to_rename(count, *options)
            while not stopped and index == 0 and count > 2:  # the last step was under way
                count -= 2
                stopped = project.run_up_to_rename(count, *options)
            if not stopped and index == 0:
                stopped = project.run_for(seconds * fraction)
            stops += stopped
        else:
            stops += project.run_until(fraction * project.duration, *options)
        done = fraction
    if not stops:
        raise Failure("the run was over before it could be stopped")
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
        # an ended run begins anew, without the restart file of its past; before its first output time there is
        # nothing to continue
        if process.returncode == 0 and chance.random() < 0.5:
            shutil.rmtree(project.results)
        options = ["--restart"] if project.has_restart_file() else []
    project.run(*options)
    return backups


def cases_of(arguments):
    if arguments.kill:
        return {f"killed {arguments.kill} times": None}
    if arguments.stop:
        return {f"stopped {arguments.stop} times": [(k + 1) / (arguments.stop + 1) for k in range(arguments.stop)]}
    cases = {f"stopped at {100 * f:.0f} %": [f] for f in (0.1, 0.5, 0.9)}
    cases["stopped 10 times"] = [k / 11 for k in range(1, 11)]
    return cases


def print_table(name, whole, worst, cases):
    """A line per output file with distances as largest one and root mean square: the uninterrupted run, the worst
    uninterrupted one, the worst continued one, and what that differs by from the uninterrupted one."""
    for file, own in whole.items():
        to_truth = [max(case[0][file][i] for case in cases) for i in (0, 1)]
        to_whole = max(case[1][file][0] for case in cases)
        print(f"| {name} | `{file}` | {own[0]:.2g} ({own[1]:.2g}) "
              f"| {worst[file][0]:.2g} ({worst[file][1]:.2g}) | {to_truth[0]:.2g} ({to_truth[1]:.2g}) "
              f"| {to_whole:.2g} |", flush=True)


def check(source, arguments, folder, solver):
    name = os.path.splitext(os.path.basename(source))[0]

    def copy(label, exact=1.0):
        return Project(source, os.path.join(folder, f"{name}_{label}"), solver, arguments.duration, exact)

    reference, truth = copy("whole"), copy("truth", arguments.truth)
    begin = time.monotonic()
    reference.run()
    seconds = time.monotonic() - begin
    renames = None
    if arguments.trace:
        try:
            renames = copy("traced").renames()
        except Failure:  # a program with sanitizers does not run under strace
            pass
    whole = reference.outputs()
    truth.run()
    exact = truth.outputs()
    check_times(whole, exact)
    own = distances(reference.tolerance, exact, whole)
    worst = dict(own)
    for part in TENTHS:
        other = copy(f"tolerance_{part}", part)
        other.run()
        for file, distance in distances(reference.tolerance, exact, other.outputs()).items():
            worst[file] = tuple(max(pair) for pair in zip(worst[file], distance))
    measured = []
    for label, fractions in cases_of(arguments).items():
        project = copy(label.replace(" ", "_"))
        try:
            if fractions is None:
                backups = kill_and_continue(project, arguments.kill, seconds, random.Random(arguments.seed))
                label += f" (no restart file {backups} times: none yet, or its backup)"
            else:
                stop_and_continue(project, fractions, seconds, renames)
            outputs = project.outputs()
            check_times(whole, outputs)
            measured.append((distances(reference.tolerance, exact, outputs), distances(reference.tolerance, whole, outputs)))
            share = check_distances(worst, measured[-1][0])
        except (Failure, plot_output.OutputError) as failure:
            raise Failure(f"{name}, {label}: {failure}") from failure
        if not arguments.table:
            print(f"{name}, {label}: {100 * share:.0f} % of the allowed distance", flush=True)
    if arguments.table:
        print_table(name, own, worst, measured)


def main(arguments=None):
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("projects", nargs="*", metavar="PROJECT", help="project files, default: all examples")
    parser.add_argument("--solver", default=os.path.join(ROOT, "build", "release", "bin", "solver"))
    parser.add_argument("--duration", type=float, metavar="T", help="cut longer projects to T days")
    parser.add_argument("--stop", type=int, default=0, metavar="N", help="stop N times in one run only")
    parser.add_argument("--kill", type=int, default=0, metavar="N", help="kill at N random times")
    parser.add_argument("--seed", type=int, default=1, help="of the random times")
    parser.add_argument("--truth", type=float, default=TRUTH, metavar="X", help="tolerance of the exact run, in the project's")
    parser.add_argument("--no-trace", dest="trace", action="store_false", help="never use strace")
    parser.add_argument("--table", action="store_true", help="print the distances as a table")
    options = parser.parse_args(arguments)
    options.trace = options.trace and not options.kill and bool(can_trace())
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
