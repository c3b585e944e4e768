#!/usr/bin/env python3
"""Runs whole projects with the band matrix and with the default linear solver in turn and prints the ratio of
their processor times, their steps, their peak memory, and by how much their results differ.

    bench/compare_solvers.py --solver build/release/bin/solver [case ...]

Only ratios within one run of this script mean anything.
"""

import argparse
import os
import re
import resource
import shutil
import subprocess
import tempfile
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

CLIMATE = """[CLIMATE_COND]
NAME = {name}
TYPE = {type}
KIND = DATLINEAR
FILENAME = $(CLIMATE_DIR)/germany_{file}.ccd
"""

CONSTANT = """[CLIMATE_COND]
NAME = {name}
TYPE = {type}
KIND = CONSTANT
CONSTVALUE = {value}
"""

BOUNDARY = """[BOUND_COND]
NAME = {name}
TYPE = {type}
KIND = {kind}
{lines}
"""


def graded(total, count):
    """Widths of `count` cells that grow from both surfaces to the middle, together `total` [mm]."""
    half = [min(1.3**i, 20.0) for i in range((count + 1) // 2)]
    widths = half + half[::-1][count % 2:]
    return [w * total / sum(widths) for w in widths]


class Case:
    """A joint of three materials between a wet, sunny outside and a room: nx by ny cells."""

    def __init__(self, nx, ny, days, balances="ENERGY MOISTURE"):
        self.nx, self.ny, self.days, self.balances = nx, ny, days, balances

    def conditions(self):
        moist = "MOISTURE" in self.balances
        text = "[CONDITIONS]\n[CLIMATE_CONDITIONS]\n"
        text += CLIMATE.format(name="Out T", type="TEMPER", file="temperature")
        text += CLIMATE.format(name="Out RH", type="RELHUM", file="relative_humidity")
        text += CONSTANT.format(name="In T", type="TEMPER", value="20 C")
        text += CONSTANT.format(name="In RH", type="RELHUM", value="50 %")
        text += "[BOUNDARY_CONDITIONS]\n"
        text += BOUNDARY.format(name="Out heat", type="HEATCOND", kind="EXCHANGE",
                                lines="EXCOEFF = 25 W/m2K\nTEMPER = Out T")
        text += BOUNDARY.format(name="In heat", type="HEATCOND", kind="EXCHANGE", lines="EXCOEFF = 8 W/m2K\nTEMPER = In T")
        if moist:
            text += BOUNDARY.format(name="Out vapour", type="VAPDIFF", kind="EXCHANGE",
                                    lines="EXCOEFF = 1e-7 s/m\nTEMPER = Out T\nRELHUM = Out RH")
            text += BOUNDARY.format(name="In vapour", type="VAPDIFF", kind="EXCHANGE",
                                    lines="EXCOEFF = 2.5e-8 s/m\nTEMPER = In T\nRELHUM = In RH")
        text += "[INITIAL_CONDITIONS]\n"
        text += "[INIT_COND]\nNAME = Start T\nTYPE = TEMPER\nVALUE = 10 C\n"
        if moist:
            text += "[INIT_COND]\nNAME = Start RH\nTYPE = RELHUM\nVALUE = 80 %\n"
        return text

    def assignments(self):
        nx, ny = self.nx, self.ny
        moist = "MOISTURE" in self.balances
        lines = []

        def assign(kind, box, name, place):
            lines.append(f"[SELECTION]\nTYPE = {kind}\nRANGE = {box}\nNAME = {name}\nLOCATION = {place}\n")

        whole = f"0 0 {nx - 1} {ny - 1}"
        a, b = nx // 3, nx * 9 // 10
        assign("MATERIAL", f"0 0 {a - 1} {ny - 1}", "Brick", "ELEMENT")
        assign("MATERIAL", f"{a} 0 {b - 1} {ny - 1}", "Wool", "ELEMENT")
        assign("MATERIAL", f"{b} 0 {nx - 1} {ny - 1}", "Plaster", "ELEMENT")
        if ny > 1:  # a slab of concrete runs into the wall
            assign("MATERIAL", f"{a} {ny // 3} {nx - 1} {ny * 2 // 3}", "Concrete", "ELEMENT")
        assign("INITIALCOND", whole, "Start T", "ELEMENT")
        assign("BOUNDARYCOND", f"0 0 0 {ny - 1}", "Out heat", "LEFT")
        assign("BOUNDARYCOND", f"{nx - 1} 0 {nx - 1} {ny - 1}", "In heat", "RIGHT")
        if moist:
            assign("INITIALCOND", whole, "Start RH", "ELEMENT")
            assign("BOUNDARYCOND", f"0 0 0 {ny - 1}", "Out vapour", "LEFT")
            assign("BOUNDARYCOND", f"{nx - 1} 0 {nx - 1} {ny - 1}", "In vapour", "RIGHT")
        assign("FIELDOUTPUT", whole, "T.out", "ELEMENT")
        if moist:
            assign("FIELDOUTPUT", whole, "W.out", "ELEMENT")
        return "".join(lines)

    def text(self, linear_solver):
        moist = "MOISTURE" in self.balances
        materials = {"Brick": "Brick_2001", "Wool": "MineralWool_2004", "Plaster": "LimePlaster_2003"}
        if self.ny > 1:
            materials["Concrete"] = "Concrete_2002"
        text = f"""[PROJECT_INFO]
FILE_VERSION = 5.9
[INIT]
[GENERAL]
BALANCE_EQUATIONS = {self.balances}
DURATION = {self.days} d
[SOLVER_SETTINGS]
[CVODE_SOLVER_SETTINGS]
MAX_DT = 1 h
REL_TOL = 1e-5
LINEAR_SOLVER = {linear_solver}
USE_MONITORS_FILE = YES
[MATERIALS]
"""
        for name, file in materials.items():
            text += f"[MATERIAL]\nNAME = {name}\nFILENAME = $(MATERIALS_DIR)/{file}.m6\n"
        xs = " ".join(f"{w:.6g}" for w in graded(400.0, self.nx))
        ys = " ".join(f"{w:.6g}" for w in graded(1000.0, self.ny)) if self.ny > 1 else "1000"
        text += self.conditions()
        text += f"[DISCRETISATION]\nGEOMETRY = PLANE2D\nX_STEPS = {xs} mm\nY_STEPS = {ys} mm\nZ_STEPS = 1 m\n"
        text += "[OUTPUTS]\n[GRIDS]\n[OUTPUT_GRID]\nNAME = Grid\nINTERVAL = 0 d 1 d\n[FORMATS]\n"
        fields = [("T", "TEMPER", "C")] + ([("W", "MOISTURE", "kg/m3")] if moist else [])
        for name, field, unit in fields:
            text += (f"[OUTPUT_FORMAT]\nNAME = {name}\nTYPE = FIELD\nFIELD_TYPE = {field}\nSPACE_TYPE = SINGLE\n"
                     f"TIME_TYPE = NONE\nTIME_UNIT = d\nVALUE_UNIT = {unit}\nPRECISION = 9\n")
        text += "[FILES]\n"
        for name, _, _ in fields:
            text += f"[OUTPUT_FILE]\nNAME = {name}.out\nOUTPUT_GRID = Grid\nOUTPUT_FORMAT = {name}\n"
        return text + "[ASSIGNMENTS]\n" + self.assignments()


CASES = {
    "chain": Case(100, 1, 365),
    "chain_heat": Case(100, 1, 365, "ENERGY"),
    "square20": Case(20, 20, 60),
    "square40": Case(40, 40, 20),
    "square80": Case(80, 80, 4),
    "strip": Case(200, 10, 20),
    "square40_heat": Case(40, 40, 60, "ENERGY"),
}


def run(solver, project):
    """Processor time [s], peak memory [MB] and steps of one run."""
    code = ("import resource,subprocess,sys;"
            "r=subprocess.run(sys.argv[1:],stdin=subprocess.DEVNULL,stdout=subprocess.DEVNULL);"
            "u=resource.getrusage(resource.RUSAGE_CHILDREN);"
            "print(r.returncode,u.ru_utime+u.ru_stime,u.ru_maxrss/1024)")
    out = subprocess.run(["python3", "-c", code, solver, str(project)], capture_output=True, text=True, check=True)
    returncode, seconds, memory = out.stdout.split()
    if returncode != "0":
        raise RuntimeError(f"{project}: exit code {returncode}\n{out.stderr}")
    return float(seconds), float(memory)


def numbers(path):
    values = []
    for line in path.read_text().splitlines():
        try:
            values.append([float(word) for word in line.split()])
        except ValueError:
            pass
    return values


def steps(folder):
    for file in folder.rglob("*"):
        if file.is_file() and "monitor" in file.name.lower():
            rows = [r for r in numbers(file) if r]
            if rows:
                return rows[-1]
    return None


def largest_difference(one, other):
    """Largest difference and largest value over all numbers of two output files."""
    difference = size = 0.0
    for a, b in zip(numbers(one), numbers(other)):
        for x, y in zip(a[1:], b[1:]):
            difference = max(difference, abs(x - y))
            size = max(size, abs(x))
    return difference, size


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--solver", default=str(ROOT / "build/release/bin/solver"))
    parser.add_argument("--methods", nargs="+", default=["BAND", "AUTO"])
    parser.add_argument("cases", nargs="*", default=[])
    arguments = parser.parse_args()
    for name in arguments.cases or CASES:
        with tempfile.TemporaryDirectory() as folder:
            results = {}
            for method in arguments.methods:
                home = Path(folder) / method
                home.mkdir()
                shutil.copytree(ROOT / "database", home / "database")
                directories = (f"[DIRECTORIES]\nMATERIALS_DIR = {ROOT}/database/DB_material_data\n"
                               f"CLIMATE_DIR = {ROOT}/database/DB_climate_data\n")
                project = home / "case.vel"
                project.write_text(CASES[name].text(method) + directories)
                seconds, memory = run(arguments.solver, project)
                results[method] = (seconds, memory, steps(home), home / "case.results")
            base = results[arguments.methods[0]]
            for method in arguments.methods:
                seconds, memory, monitor, outputs = results[method]
                line = f"{name:14} {method:6} {seconds:8.2f} s  ratio {base[0] / seconds:6.2f}  {memory:7.1f} MB  "
                for output in sorted(outputs.glob("*.out")):
                    difference, size = largest_difference(base[3] / output.name, output)
                    line += f" d{output.stem} {difference:.2g} of {size:.3g}"
                print(line, monitor if monitor is None else monitor[:8], flush=True)


if __name__ == "__main__":
    main()
