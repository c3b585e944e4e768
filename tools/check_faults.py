#!/usr/bin/python3
"""Lets the n-th call of the solver to the system fail, for n = 1, 2, ... up to the end of a short run.

    check_faults.py [--solver PROGRAM] [--every N] [--calls write,rename,...]

A failed write, open, fsync or rename must end the run with exit code 1 and a message with path and reason; and
the restart file that was there before must still be complete, or its backup. A fault that only meets the
console may pass. Then the run is killed at its n-th rename, and must go on. Needs strace.
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..")
ERRORS = {"write": ["ENOSPC", "EIO"], "writev": ["ENOSPC"], "openat": ["EIO"], "fsync": ["EIO"],
          "rename": ["ENOSPC"], "close": ["EIO"]}
REASONS = {"ENOSPC": "No space left on device", "EIO": "Input/output error"}

PROJECT = """[INIT]
[GENERAL]
BALANCE_EQUATIONS = ENERGY
DURATION = 3 h
[SOLVER_SETTINGS]
[CVODE_SOLVER_SETTINGS]
USE_MONITORS_FILE = yes
[MATERIALS]
[MATERIAL]
NAME = Block
RHO = 1000 kg/m3
CE = 1000 J/kgK
LAMBDA = 1 W/mK
[CONDITIONS]
[CLIMATE_CONDITIONS]
[CLIMATE_COND]
NAME = Cold
TYPE = TEMPER
KIND = CONSTANT
CONSTVALUE = 0 C
[BOUNDARY_CONDITIONS]
[BOUND_COND]
NAME = Film
TYPE = HEATCOND
KIND = EXCHANGE
TEMPER = Cold
EXCOEFF = 25 W/m2K
[DISCRETISATION]
GEOMETRY = PLANE2D
X_STEPS = 0.02 0.02 0.02 m
Y_STEPS = 1 m
[OUTPUTS]
[GRIDS]
[OUTPUT_GRID]
NAME = Hourly
INTERVAL = 0 d 1 h
[FORMATS]
[OUTPUT_FORMAT]
NAME = Temperature
TYPE = FIELD
FIELD_TYPE = TEMPER
SPACE_TYPE = SINGLE
TIME_TYPE = NONE
[OUTPUT_FORMAT]
NAME = Heat
TYPE = FLUX
FLUX_TYPE = HEATFLUX
SPACE_TYPE = INTEGRAL
TIME_TYPE = INTEGRAL
[FILES]
[OUTPUT_FILE]
NAME = profile.out
OUTPUT_GRID = Hourly
OUTPUT_FORMAT = Temperature
[OUTPUT_FILE]
NAME = heat.out
OUTPUT_GRID = Hourly
OUTPUT_FORMAT = Heat
[ASSIGNMENTS]
[SELECTION]
TYPE = MATERIAL
RANGE = 0 0 2 0
NAME = Block
LOCATION = ELEMENT
[SELECTION]
TYPE = BOUNDARYCOND
RANGE = 0 0 0 0
NAME = Film
LOCATION = LEFT
[SELECTION]
TYPE = FIELDOUTPUT
RANGE = 0 0 2 0
NAME = profile.out
LOCATION = ELEMENT
[SELECTION]
TYPE = FLUXOUTPUT
RANGE = 0 0 0 0
NAME = heat.out
LOCATION = LEFT
"""


def run(solver, project, inject=None, *options):
    """Exit code, standard error, and the path that the injected fault met."""
    trace = project + ".trace"
    command = [solver, "-x", "-v0", *options, project]
    if inject:
        command = ["strace", "-y", "-o", trace, "-e", f"trace={inject.split(':')[0]}", "-e", f"inject={inject}", *command]
    done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60, check=False)
    met = None
    if inject:
        with open(trace, encoding="utf-8", errors="replace") as stream:
            for line in stream:
                if "(INJECTED)" in line:
                    met = line
    return done.returncode, done.stderr, met


def complete_restart_file(results):
    for name in ("restart.txt", "restart.txt.backup"):
        try:
            with open(os.path.join(results, name), encoding="ascii") as stream:
                lines = stream.read().split("\n")
            if len(lines) == 4 and len(lines[1].split()) == 3 and len(lines[2].split()) == 3 and not lines[3]:
                return True
        except OSError:
            pass
    return False


def is_of_interest(met, folder):
    """False for calls on the console, the loader and the system, and for the reading of the project."""
    return folder in met and 'wall.vel", O_RDONLY' not in met and "wall.vel>)" not in met


def sweep(call, error, solver, folder, every):
    project = os.path.join(folder, "wall.vel")
    results = os.path.join(folder, "wall.results")
    failures, cases, n = 0, 0, 1
    while True:
        shutil.rmtree(results, ignore_errors=True)
        assert run(solver, project)[0] == 0  # leaves a complete restart file
        code, text, met = run(solver, project, f"{call}:error={error}:when={n}")
        if met is None:
            return cases, failures
        n += every
        if not is_of_interest(met, folder):
            continue
        cases += 1
        named = re.search(re.escape(folder), text) is not None and REASONS[error] in text
        # a log that cannot be opened stops nothing
        log_not_opened = call == "openat" and ".vel.output" in met
        if log_not_opened and code == 0:
            continue
        if code != 1 or not (named or "wall.vel'" in text) or not complete_restart_file(results):
            print(f"FAILED: {call} {n - every} {error}: exit code {code}\n  {met.strip()[:200]}\n  {text.strip()[:400]}",
                  file=sys.stderr)
            failures += 1


def times_of(path):
    """Times of the records of a text file with geometry, or without."""
    with open(path, encoding="utf-8") as stream:
        records = stream.read().split("\n\n")[-1]
    return [line.split()[0] for line in records.strip().split("\n")]


def kill_sweep(solver, folder, every):
    """Kills a run at its n-th rename, for all n, and continues it."""
    project = os.path.join(folder, "wall.vel")
    results = os.path.join(folder, "wall.results")
    failures, cases, n = 0, 0, 1
    while True:
        shutil.rmtree(results, ignore_errors=True)
        code, _, _ = run(solver, project, f"rename:signal=KILL:when={n}")
        if code == 0:
            return cases, failures
        cases += 1
        file = os.path.join(results, "restart.txt")
        if not os.path.exists(file) and os.path.exists(file + ".backup"):
            os.rename(file + ".backup", file)
        begun = os.path.exists(file)  # else the run was killed before its first state
        code, text, _ = run(solver, project, *([None, "--restart"] if begun else []))
        times = times_of(os.path.join(results, "profile.out"))
        if code != 0 or times != ["0", "3600", "7200", "10800"]:
            print(f"FAILED: killed at rename {n}: exit code {code}, times {times}\n{text}", file=sys.stderr)
            failures += 1
        n += every


def main(arguments=None):
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--solver", default=os.path.join(ROOT, "build", "release", "bin", "solver"))
    parser.add_argument("--every", type=int, default=1, metavar="N", help="only every N-th call fails")
    parser.add_argument("--calls", default=",".join(ERRORS), help="system calls, separated by commas")
    options = parser.parse_args(arguments)
    probe = shutil.which("strace") and subprocess.run(["strace", "-o", "/dev/null", "true"], check=False).returncode
    if probe != 0:
        print("check_faults.py needs strace and the right to use it")
        return 0
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "wall.vel"), "w", encoding="utf-8") as stream:
            stream.write(PROJECT)
        for call in options.calls.split(","):
            for error in ERRORS[call]:
                cases, failed = sweep(call, error, os.path.abspath(options.solver), folder, options.every)
                print(f"{call} {error}: {cases} faults, {failed} wrong", flush=True)
                failures += failed
        cases, failed = kill_sweep(os.path.abspath(options.solver), folder, options.every)
        print(f"rename SIGKILL: {cases} kills, {failed} wrong", flush=True)
        failures += failed
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
