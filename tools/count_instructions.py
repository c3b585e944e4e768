#!/usr/bin/env python3
"""Counts the instructions of the right-hand side with valgrind, per cell and evaluation, and holds them against
stored figures: a slowdown shows on any machine, however busy it is.

    tools/count_instructions.py --program build/release/bin/count_right_hand_side            compares
    tools/count_instructions.py --program build/release/bin/count_right_hand_side --store    stores new figures
    tools/count_instructions.py --program build/release/bin/count_right_hand_side --profile wall_energy_moisture

Exit code 0 where all figures agree within the tolerance, 1 where one does not, 77 where they cannot be compared: no
valgrind, another compiler or other options than those of the stored figures.
"""

import argparse
import os
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
STORED = ROOT / "tests/counting/right_hand_side.txt"
CANNOT_COMPARE = 77
EVALUATIONS = 48
FUNCTION = "countedEvaluations"

# name: columns, rows, balance equations
CASES = {
    "wall_energy": (100, 1, "ENERGY"),
    "wall_moisture": (100, 1, "MOISTURE"),
    "wall_energy_moisture": (100, 1, "ENERGY MOISTURE"),
    "wall_energy_moisture_ice": (100, 1, "ENERGY MOISTURE ICE"),
    "wall_energy_moisture_air": (100, 1, "ENERGY MOISTURE AIR"),
    "wall_energy_pollutant": (100, 1, "ENERGY POLLUTANT"),
    "square_energy": (20, 20, "ENERGY"),
    "square_energy_moisture": (20, 20, "ENERGY MOISTURE"),
}

# The mathematical library has functions of its own for processors that multiply and add in one instruction, and the
# C library for those with wide vectors. Without them the count is the same on every machine.
PLAIN_PROCESSOR = "glibc.cpu.hwcaps=-AVX,-AVX2,-FMA,-FMA4,-AVX512F,-AVX512VL,-ERMS,-FSRM,-BMI2"


def count(program, names, profile=False):
    """Instructions per cell and evaluation of these cases, and by what the program was made. With `profile` the
    functions that take them are printed."""
    bodies = [str(value) for name in names for value in CASES[name]]
    with tempfile.TemporaryDirectory() as folder:
        out = Path(folder) / "callgrind.out"
        run = subprocess.run(
            ["valgrind", "--tool=callgrind", f"--toggle-collect={FUNCTION}", f"--dump-after={FUNCTION}",
             f"--callgrind-out-file={out}", str(program), str(EVALUATIONS), *bodies],
            capture_output=True, text=True, env=dict(os.environ, GLIBC_TUNABLES=PLAIN_PROCESSOR))
        if run.returncode != 0:
            raise RuntimeError(f"{program}: exit code {run.returncode}\n{run.stdout}{run.stderr}")
        told = [line.split(" ", 1) for line in run.stdout.splitlines()]
        cells = [int(value) for key, value in told if key == "cells"]
        figures = {}
        for i, name in enumerate(names):
            part = Path(f"{out}.{i + 1}")
            figures[name] = total_of(part) / (cells[i] * EVALUATIONS)
            if profile:
                print_profile(part)
    return figures, {key: value for key, value in told if key != "cells"}


def total_of(part):
    text = part.read_text() if part.exists() else ""
    total = next((line for line in text.splitlines() if line.startswith("totals:")), None)
    if total is None or int(total.split()[1]) == 0:
        raise RuntimeError(f"valgrind has not seen {FUNCTION}")
    return int(total.split()[1])


def print_profile(part):
    lines = subprocess.run(["callgrind_annotate", "--auto=no", str(part)], capture_output=True, text=True, check=True)
    print("\n".join(line for line in lines.stdout.splitlines() if "%)" in line))


def read_stored(path):
    figures, made = {}, {}
    for line in path.read_text().splitlines():
        if line.startswith("#") or not line.strip():
            continue
        name, value = line.split(None, 1)
        if name in ("compiler", "options"):
            made[name] = value.strip()
        else:
            figures[name] = float(value)
    return figures, made


def store(path, figures, made):
    lines = ["# Instructions of the right-hand side per cell and evaluation, counted and compared by",
             "# tools/count_instructions.py, which stores new figures with --store."]
    lines += [f"{name:26} {value}" for name, value in made.items()]
    lines += [f"{name:26} {figure:.1f}" for name, figure in figures.items()]
    path.write_text("\n".join(lines) + "\n")


def compare(figures, stored, tolerance):
    """A line for each case, and whether all agree."""
    lines, agree = [], True
    for name in sorted(set(figures) | set(stored)):
        if name not in figures or name not in stored:
            lines.append(f"{name:26} {'not stored' if name in figures else 'not counted'}")
            agree = False
            continue
        change = figures[name] / stored[name] - 1.0
        good = abs(change) <= tolerance
        agree = agree and good
        lines.append(f"{name:26} {figures[name]:10.1f} counted {stored[name]:10.1f} stored {100 * change:+7.1f} %"
                     + ("" if good else "   <-- beyond the tolerance"))
    return lines, agree


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--program", required=True, type=Path, help="the program count_right_hand_side")
    parser.add_argument("--stored", default=STORED, type=Path, help="file of the stored figures")
    parser.add_argument("--tolerance", default=0.1, type=float, help="relative difference allowed")
    parser.add_argument("--store", action="store_true", help="store the figures counted now")
    parser.add_argument("--profile", metavar="CASE", choices=list(CASES), help="print the functions that take them")
    arguments = parser.parse_args()
    if shutil.which("valgrind") is None:
        print("Needs the package valgrind.")
        return CANNOT_COMPARE
    if arguments.profile:
        figures, _ = count(arguments.program, [arguments.profile], profile=True)
        print(f"{figures[arguments.profile]:.1f} per cell and evaluation")
        return 0
    figures, made = count(arguments.program, list(CASES))
    if arguments.store:
        store(arguments.stored, figures, made)
        print(arguments.stored.read_text(), end="")
        return 0
    stored, stored_made = read_stored(arguments.stored)
    for line in compare(figures, stored, arguments.tolerance)[0]:
        print(line)
    if made != stored_made:
        print(f"Not comparable: the figures are stored for {stored_made}, the program is made by {made}.")
        return CANNOT_COMPARE
    if not compare(figures, stored, arguments.tolerance)[1]:
        print(f"\nThe right-hand side takes another number of instructions per cell and evaluation than stored in\n"
              f"{arguments.stored}. If that is meant, store the new figures:\n"
              f"  tools/count_instructions.py --program {arguments.program} --store")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
