#!/usr/bin/python3
"""Lets the n-th call of the solver to the system fail, for n = 1, 2, ... up to the end of a short run.

    check_faults.py [--solver PROGRAM] [--every N] [--calls write,rename,...]

A failed write, open, fsync or rename must end the run with exit code 1 and a message with path and reason; and
the restart file that was there before must still be complete, or its backup. A fault that only meets the
console may pass. The same holds for a run that goes on behind a kill, unless all its records are right in spite of
the fault. Then the run is killed at its n-th rename, and must go on. Needs strace.
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
ON_RESTART = {"write": ["ENOSPC"], "openat": ["EIO"], "truncate": ["EIO"], "rename": ["EIO"], "read": ["EIO"]}
REASONS = {"ENOSPC": "No space left on device", "EIO": "Input/output error"}

PROJECT = """[INIT]
[GENERAL]
BALANCE_EQUATIONS = ENERGY
DURATION = 3 h
[SOLVER_SETTINGS]
[CVODE_SOLVER_SETTINGS]
USE_MONITORS_FILE = yes
MAX_DT = 10 s
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
    """Exit code, what the program has told, and the call that the injected fault met."""
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
    return done.returncode, done.stdout + done.stderr, met


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


def records_of(path):
    """The numbers of the records of a text file with geometry, or without."""
    with open(path, encoding="utf-8") as stream:
        records = stream.read().split("\n\n")[-1]
    return [[float(word) for word in line.split()] for line in records.strip().split("\n")]


def differs(records, expected):
    """Whether output times are missing or double, or values differ by more than the steps explain."""
    if [record[0] for record in records] != [record[0] for record in expected]:
        return True
    return any(abs(a - b) > 5e-3 * abs(b) for one, other in zip(records, expected) for a, b in zip(one, other))


def records_of_whole_run(solver, project, results):
    assert run(solver, project)[0] == 0
    return {name: records_of(os.path.join(results, name)) for name in ("profile.out", "heat.out")}


def prepare(solver, project, results, restarted):
    """Leaves a complete restart file; for a restart that of a run that was killed, with records behind it."""
    shutil.rmtree(results, ignore_errors=True)
    code = run(solver, project, "rename:signal=KILL:when=7" if restarted else None)[0]
    assert code == (-9 if restarted else 0), code


def is_told(text, error, folder):
    """Whether a message names path and reason. The texts of an unreadable project or restart file have no reason."""
    if re.search(re.escape(folder), text) and REASONS[error] in text:
        return True
    return any(known in text for known in ("wall.vel'", "Restart file missing!", "restart file!"))


def is_harmless(folder, whole, text):
    """Whether a run that went on in spite of a fault has the records of a whole run, or tells what is missing."""
    for name, records in whole.items():
        if differs(records_of(os.path.join(folder, "wall.results", name)), records):
            return name == "heat.out" and "time integrals begin anew" in text
    return True


def sweep(call, error, solver, folder, every, restarted=False):
    project = os.path.join(folder, "wall.vel")
    results = os.path.join(folder, "wall.results")
    whole = records_of_whole_run(solver, project, results)
    failures, cases, n = 0, 0, 1
    while True:
        prepare(solver, project, results, restarted)
        code, text, met = run(solver, project, f"{call}:error={error}:when={n}", *(["--restart"] if restarted else []))
        if met is None:
            return cases, failures
        n += every
        if not is_of_interest(met, folder):
            continue
        cases += 1
        # a log that cannot be opened stops nothing
        log_not_opened = call == "openat" and ".vel.output" in met
        if code == 0 and (log_not_opened or restarted and is_harmless(folder, whole, text)):
            continue
        if code != 1 or not is_told(text, error, folder) or not complete_restart_file(results):
            print(f"FAILED: {call} {n - every} {error}: exit code {code}\n  {met.strip()[:200]}\n  {text.strip()[:400]}",
                  file=sys.stderr)
            failures += 1


def kill_sweep(solver, folder, every):
    """Kills a run at its n-th rename, for all n, and continues it: records and integrals are those of a whole run."""
    project = os.path.join(folder, "wall.vel")
    results = os.path.join(folder, "wall.results")
    failures, cases, n = 0, 0, 1
    whole = records_of_whole_run(solver, project, results)
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
        if code != 0 or not is_harmless(folder, whole, text) or "begin anew" in text:
            print(f"FAILED: killed at rename {n}: exit code {code}\n{text}", file=sys.stderr)
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
        for call in ON_RESTART:
            for error in ON_RESTART[call]:
                cases, failed = sweep(call, error, os.path.abspath(options.solver), folder, options.every, True)
                print(f"{call} {error} in a restart: {cases} faults, {failed} wrong", flush=True)
                failures += failed
        cases, failed = kill_sweep(os.path.abspath(options.solver), folder, options.every)
        print(f"rename SIGKILL: {cases} kills, {failed} wrong", flush=True)
        failures += failed
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
