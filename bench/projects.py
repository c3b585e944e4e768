"""Project files of bodies of any size for the comparisons of this folder, and one of many outputs."""

import re
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
MATERIALS = {"Brick": "Brick_2001", "Wool": "MineralWool_2004", "Plaster": "LimePlaster_2003", "Concrete": "Concrete_2002"}
DATABASES = {"MATERIALS": "DB_material_data", "CLIMATE": "DB_climate_data", "VOC": "DB_VOC_data"}

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


def directories():
    """Where a project in any folder finds the shipped materials and climate."""
    return "[DIRECTORIES]\n" + "".join(f"{name} = {ROOT}/database/{folder}\n" for name, folder in DATABASES.items())


def graded(total, count):
    """Widths of `count` cells that grow from both surfaces to the middle, together `total` [mm]."""
    half = [min(1.3**i, 20.0) for i in range((count + 1) // 2)]
    widths = half + half[::-1][count % 2:]
    return [w * total / sum(widths) for w in widths]


class Case:
    """A joint of three materials between the outside and a room: nx by ny cells."""

    def __init__(self, nx, ny, days, balances="ENERGY MOISTURE", start=0):
        """`start`: day of the year."""
        self.nx, self.ny, self.days, self.balances, self.start = nx, ny, days, balances, start

    def has(self, balance):
        return balance in self.balances.split()

    @property
    def cells(self):
        return self.nx * self.ny

    def boundaries(self):
        """Equation, name, whether outside, type, kind and lines of each boundary condition."""
        return [
            ("ENERGY", "Out heat", True, "HEATCOND", "EXCHANGE", "EXCOEFF = 25 W/m2K\nTEMPER = Out T"),
            ("ENERGY", "In heat", False, "HEATCOND", "EXCHANGE", "EXCOEFF = 8 W/m2K\nTEMPER = In T"),
            ("MOISTURE", "Out vapour", True, "VAPDIFF", "EXCHANGE", "EXCOEFF = 1e-7 s/m\nTEMPER = Out T\nRELHUM = Out RH"),
            ("MOISTURE", "In vapour", False, "VAPDIFF", "EXCHANGE", "EXCOEFF = 2.5e-8 s/m\nTEMPER = In T\nRELHUM = In RH"),
            ("AIR", "Out air", True, "AIRPRESS", "EXCHANGE",
             "EXCOEFF = 1 s/m\nTEMPER = Out T\nRELHUM = Out RH\nGASPRESS = Out p"),
            ("AIR", "In air", False, "AIRPRESS", "EXCHANGE",
             "EXCOEFF = 1 s/m\nTEMPER = In T\nRELHUM = In RH\nGASPRESS = In p"),
            ("POLLUTANT", "Out pollutant", True, "VOCDIFF", "EXCHANGE", "EXCOEFF = 0.01 m/s\nVOCDENSG = Clean"),
            ("POLLUTANT", "In pollutant", False, "VOCDIFF", "EXCHANGE", "EXCOEFF = 0.001 m/s\nVOCDENSG = Clean"),
        ]

    def conditions(self):
        text = "[CONDITIONS]\n[CLIMATE_CONDITIONS]\n"
        text += CLIMATE.format(name="Out T", type="TEMPER", file="temperature")
        text += CLIMATE.format(name="Out RH", type="RELHUM", file="relative_humidity")
        text += CONSTANT.format(name="Out p", type="GASPRESS", value="101325 Pa")
        text += CONSTANT.format(name="In T", type="TEMPER", value="20 C")
        text += CONSTANT.format(name="In RH", type="RELHUM", value="50 %")
        text += CONSTANT.format(name="In p", type="GASPRESS", value="101328 Pa")
        text += CONSTANT.format(name="Clean", type="VOCDENSG", value="0 kg/m3")
        text += "[BOUNDARY_CONDITIONS]\n"
        for equation, name, _, kind, way, lines in self.boundaries():
            if self.has(equation):
                text += BOUNDARY.format(name=name, type=kind, kind=way, lines=lines)
        text += "[INITIAL_CONDITIONS]\n[INIT_COND]\nNAME = Start T\nTYPE = TEMPER\nVALUE = 10 C\n"
        if self.has("MOISTURE"):
            text += "[INIT_COND]\nNAME = Start RH\nTYPE = RELHUM\nVALUE = 80 %\n"
            text += "[INIT_COND]\nNAME = Wet\nTYPE = RELHUM\nVALUE = 99 %\n"
        if self.has("POLLUTANT"):
            text += "[INIT_COND]\nNAME = Load\nTYPE = VOCMASS\nVALUE = 0.001 kg/m3\n"
        return text

    def assignments(self):
        nx, ny = self.nx, self.ny
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
        if self.has("MOISTURE"):
            assign("INITIALCOND", whole, "Start RH", "ELEMENT")
        if self.has("POLLUTANT"):
            assign("INITIALCOND", f"{b} 0 {nx - 1} {ny - 1}", "Load", "ELEMENT")
        if self.has("ICE"):  # the frost needs water
            assign("INITIALCOND", f"0 0 {a - 1} {ny - 1}", "Wet", "ELEMENT")
        for equation, name, outside, _, _, _ in self.boundaries():
            if self.has(equation):
                column = 0 if outside else nx - 1
                assign("BOUNDARYCOND", f"{column} 0 {column} {ny - 1}", name, "LEFT" if outside else "RIGHT")
        for name, _, _ in self.fields():
            assign("FIELDOUTPUT", whole, f"{name}.out", "ELEMENT")
        return "".join(lines)

    def fields(self):
        """Name, keyword and unit of each output."""
        fields = [("T", "TEMPER", "C")] if self.has("ENERGY") else []
        if self.has("MOISTURE"):
            fields.append(("W", "MOISTURE", "kg/m3"))
        if self.has("ICE"):
            fields.append(("ice", "RHO_ICE", "kg/m3"))
        if self.has("POLLUTANT"):
            fields.append(("voc", "VOCG", "kg/m3"))
        return fields

    def outputs(self):
        text = f"[OUTPUTS]\n[GRIDS]\n[OUTPUT_GRID]\nNAME = Grid\nINTERVAL = 0 d {min(1, self.days)} d\n[FORMATS]\n"
        for name, field, unit in self.fields():
            text += (f"[OUTPUT_FORMAT]\nNAME = {name}\nTYPE = FIELD\nFIELD_TYPE = {field}\nSPACE_TYPE = SINGLE\n"
                     f"TIME_TYPE = NONE\nTIME_UNIT = d\nVALUE_UNIT = {unit}\nPRECISION = 9\n")
        text += "[FILES]\n"
        for name, _, _ in self.fields():
            text += f"[OUTPUT_FILE]\nNAME = {name}.out\nOUTPUT_GRID = Grid\nOUTPUT_FORMAT = {name}\n"
        return text

    def materials(self):
        text = "[MATERIALS]\n"
        for name, file in MATERIALS.items():
            if name != "Concrete" or self.ny > 1:
                folder = "$(PROJECT_DIR)" if self.has("AIR") else "$(MATERIALS_DIR)"
                text += f"[MATERIAL]\nNAME = {name}\nFILENAME = {folder}/{file}.m6\n"
        return text

    def text(self, linear_solver):
        xs = " ".join(f"{w:.6g}" for w in graded(400.0, self.nx))
        ys = " ".join(f"{w:.6g}" for w in graded(1000.0, self.ny)) if self.ny > 1 else "1000"
        return (f"[PROJECT_INFO]\nFILE_VERSION = 5.9\n[INIT]\n[GENERAL]\nBALANCE_EQUATIONS = {self.balances}\n"
                f"START_TIME = {86400 * self.start}\nDURATION = {self.days} d\n"
                "VOC_DATABASE = $(VOC_DIR)/common.voc\nVOC_IDS = TVOC\n"
                f"[SOLVER_SETTINGS]\n[CVODE_SOLVER_SETTINGS]\nMAX_DT = 10 min\nREL_TOL = 1e-6\n"
                f"LINEAR_SOLVER = {linear_solver}\nUSE_MONITORS_FILE = YES\n{self.materials()}{self.conditions()}"
                f"[DISCRETISATION]\nGEOMETRY = PLANE2D\nX_STEPS = {xs} mm\nY_STEPS = {ys} mm\nZ_STEPS = 1 m\n"
                f"{self.outputs()}[ASSIGNMENTS]\n{self.assignments()}")

    def write(self, folder, linear_solver):
        """Writes the project with all that it needs into a folder. Returns its file."""
        if self.has("AIR"):
            for file in MATERIALS.values():
                (folder / f"{file}.m6").write_text(airy(file))
        project = folder / "case.vel"
        project.write_text(self.text(linear_solver) + directories())
        return project


class ExampleCase:
    """One of the examples as it is, or cut to `days`. Outputs are compared by name."""

    ny = 1

    def __init__(self, path, fields, days=None):
        self.source = ROOT / "examples" / path
        self.names = fields
        self.days = days

    def fields(self):
        return [(name, None, None) for name in self.names]

    def grid(self, text):
        """Changes the grid of the text; the base class leaves it."""
        return text

    def write(self, folder, linear_solver):
        text = self.grid(self.source.read_text())
        if self.days is not None:
            text = re.sub(r"(?m)^DURATION = .*$", f"DURATION = {self.days} d", text)
        self.nx = len(re.search(r"(?m)^X_STEPS = (.*) mm", text).group(1).split())
        self.days = self.days or int(re.search(r"(?m)^DURATION = (\d+) d", text).group(1))
        settings = "[CVODE_SOLVER_SETTINGS]\n"
        text = text.replace(settings, f"{settings}LINEAR_SOLVER = {linear_solver}\nUSE_MONITORS_FILE = YES\n")
        project = folder / "case.vel"
        project.write_text(text + "\n" + directories())
        return project


class CapillaryWall(ExampleCase):
    """Brick, mortar and capillary active insulation in constant climate over 60 days, 150 cells."""

    LAYERS = ((365.0, 70), (15.0, 30), (40.0, 50))  # [mm], cells
    OLD = (128, 178, 250)  # cells up to the end of each layer in the example

    def __init__(self):
        super().__init__("benchmarks/hamstad_insulation/hamstad_insulation.vel",
                         ("temperature", "water_content", "humidity"))

    def grid(self, text):
        steps = " ".join(f"{width:.6g}" for total, count in self.LAYERS for width in graded(total, count))
        text = re.sub(r"(?m)^X_STEPS = .*$", f"X_STEPS = {steps} mm", text)
        ends = [sum(count for _, count in self.LAYERS[:i + 1]) for i in range(3)]
        columns = {0: 0} | {old - 1: new - 1 for old, new in zip(self.OLD, ends)} | dict(zip(self.OLD, ends))
        return re.sub(r"(?m)^RANGE = (\d+) 0 (\d+) 0$",
                      lambda m: f"RANGE = {columns[int(m[1])]} 0 {columns[int(m[2])]} 0", text)


def airy(file):
    """Text of a shipped material, which lets air through in any case."""
    text = (ROOT / f"database/DB_material_data/{file}.m6").read_text().replace("AIR_TIGHT", "")
    text = re.sub(r"(?m)^FLAGS = *\n", "", text)
    if re.search(r"(?m)^KG = ", text):
        return text
    return text.replace("[TRANSPORT_BASE_PARAMETERS]\n", "[TRANSPORT_BASE_PARAMETERS]\nKG = 1e-6 s\n")
