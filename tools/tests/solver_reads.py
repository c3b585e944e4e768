"""Lets the solver read climate series: it initializes a small wall under them."""

import os
import pathlib
import subprocess
import tempfile

ROOT = pathlib.Path(os.path.abspath(__file__)).parent.parent.parent
PROGRAM = pathlib.Path(os.environ.get("VELMORA_PROGRAM", ROOT / "build" / "release" / "bin" / "solver"))

PROJECT = """[PROJECT_INFO]
FILE_VERSION = 5.9
[INIT]
[GENERAL]
BALANCE_EQUATIONS = ENERGY
DURATION = 365 d
[MATERIALS]
[MATERIAL]
NAME = Board
RHO = 850 kg/m3
CE = 1000 J/kgK
LAMBDA = 0.25 W/mK
[CONDITIONS]
[CLIMATE_CONDITIONS]
{climate}[BOUNDARY_CONDITIONS]
[BOUND_COND]
NAME = Outside
TYPE = HEATCOND
KIND = EXCHANGE
EXCOEFF = 25 W/m2K
{links}[INITIAL_CONDITIONS]
[INIT_COND]
NAME = Start
TYPE = TEMPER
VALUE = 20 C
[DISCRETISATION]
GEOMETRY = PLANE2D
X_STEPS = 10 10 mm
Y_STEPS = 1 m
[OUTPUTS]
[ASSIGNMENTS]
[SELECTION]
TYPE = MATERIAL
RANGE = 0 0 1 0
NAME = Board
LOCATION = ELEMENT
[SELECTION]
TYPE = INITIALCOND
RANGE = 0 0 1 0
NAME = Start
LOCATION = ELEMENT
[SELECTION]
TYPE = BOUNDARYCOND
RANGE = 0 0 0 0
NAME = Outside
LOCATION = LEFT
"""


def initialize(files):
    """Exit code and output of the solver for {condition: path of the series}."""
    climate = "".join(
        f"[CLIMATE_COND]\nNAME = Outdoor {name}\nTYPE = {name}\nKIND = DATLINEAR\nFILENAME = {path}\n"
        for name, path in files.items()
    )
    links = "".join(f"{name} = Outdoor {name}\n" for name in files)
    with tempfile.TemporaryDirectory() as folder:
        project = pathlib.Path(folder) / "wall.vel"
        project.write_text(PROJECT.format(climate=climate, links=links), encoding="utf-8")
        command = [str(PROGRAM), "-x", "-t", str(project)]
        run = subprocess.run(command, capture_output=True, text=True, check=False, timeout=60)
    return run.returncode, run.stdout + run.stderr
