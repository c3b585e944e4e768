#!/usr/bin/python3
"""Draws the output files of the solver as PNG pictures.

    plot_output.py FILE... [-o PNG]         every file beside itself, or all in one picture
    plot_output.py DIRECTORY                every output file of a results directory
    plot_output.py FILE --map [--time T]    map of a field at T days (default: the last record)
    plot_output.py FILE --series            values over time

Without --map and --series the picture follows the data: few values become lines over time, many values
in a row or column become profiles, and a field over several rows and columns becomes a map.
Needs python3-matplotlib.
"""

import argparse
import os
import struct
import sys
from dataclasses import dataclass, field

MAGIC = "# Velmora 5 Output file"
BINARY_MAGIC = MAGIC.encode() + b" - binary 5.0" + bytes(4)
SECONDS_PER_DAY = 86400.0
UNIT_SECONDS = {"undefined": 1.0, "s": 1.0, "ms": 1e-3, "min": 60.0, "h": 3600.0, "d": 86400.0, "a": 3.1536e7}
MANY_VALUES = 8
PROFILES = 6


class OutputError(Exception):
    """A file that cannot be read or drawn; the text is for the user."""


@dataclass
class OutputFile:
    """Content of one output file."""

    path: str
    header: dict = field(default_factory=dict)
    materials: dict = field(default_factory=dict)  # id -> name
    grid_x: list = field(default_factory=list)  # [m] column widths
    grid_y: list = field(default_factory=list)  # [m] row heights, from the top
    thickness: float = 1.0  # [m], 0: rotationally symmetric
    elements: dict = field(default_factory=dict)  # number -> (i, j, material id)
    sides: dict = field(default_factory=dict)  # number -> (x, y, is vertical)
    numbers: list = field(default_factory=list)
    times: list = field(default_factory=list)  # in the time unit of the file
    values: list = field(default_factory=list)  # one list per record

    @property
    def is_field(self):
        return self.header.get("TYPE") == "FIELD"

    @property
    def has_geometry(self):
        return bool(self.grid_x)

    @property
    def rotational(self):
        return self.has_geometry and self.thickness == 0.0

    @property
    def label(self):
        unit = self.header.get("VALUE_UNIT", "undefined")
        quantity = self.header.get("QUANTITY", "value")
        return quantity if unit == "undefined" else f"{quantity} [{unit}]"

    def days(self):
        """Times in days and the label of the axis; times of a unit that is no time stay as they are."""
        unit = self.header.get("TIME_UNIT", "undefined")
        seconds = UNIT_SECONDS.get(unit)
        if seconds is None:
            return list(self.times), f"time [{unit}]"
        return [t * seconds / SECONDS_PER_DAY for t in self.times], "time [d]"


def is_output_file(path):
    """True for a file that begins as the output files of the solver do, binary ones included."""
    try:
        with open(path, "rb") as stream:
            return stream.read(len(MAGIC)) == MAGIC.encode()
    except OSError:
        return False


def read_output(path):
    """Reads an output file of either form. Raises OutputError with the reason if that is not possible."""
    try:
        with open(path, "rb") as stream:
            data = stream.read()
    except OSError as error:
        raise OutputError(f"{path}: {error.strerror}") from error
    first = data.split(b"\n", 1)[0]
    output = OutputFile(path)
    try:
        if data.startswith(BINARY_MAGIC):
            read_binary(output, data)
        elif first == MAGIC.encode():
            read_text(output, data)
        else:
            raise OutputError(f"{path}: is not an output file of the solver")
    except (ValueError, IndexError, KeyError, struct.error) as error:
        raise OutputError(f"{path}: damaged output file ({error})") from error
    if not output.times:
        raise OutputError(f"{path}: has no records yet")
    return output


class Bytes:
    """Walks through a binary file; numbers are little-endian."""

    def __init__(self, data):
        self.data = data
        self.position = 0

    def take(self, layout):
        values = struct.unpack_from("<" + layout, self.data, self.position)
        self.position += struct.calcsize("<" + layout)
        return values

    def number(self):
        return self.take("i")[0]

    def count(self, size):
        """A count of things of `size` bytes, all of which must be there."""
        (count,) = self.take("I")
        if count * size > len(self.data) - self.position:
            raise ValueError("the file ends too early")
        return count

    def string(self):
        (text,) = self.take(f"{self.count(1)}s")
        return text.rstrip(b"\0").decode("utf-8", "replace")

    def doubles(self):
        return list(self.take(f"{self.count(8)}d"))


def name_of(names, index):
    return names[index] if 0 <= index < len(names) else "UNKNOWN"


def read_binary(output, data):
    source = Bytes(data)
    source.position = len(BINARY_MAGIC)
    header = output.header
    header["TYPE"] = name_of(["FIELD", "FLUX"], source.number())
    header["PROJECT_FILE"] = source.string()
    header["CREATED"] = str(source.number())
    header["QUANTITY"] = source.string()
    header["SPACE_TYPE"] = name_of(["SINGLE", "MEAN", "INTEGRAL"], source.number())
    header["TIME_TYPE"] = name_of(["NONE", "MEAN", "INTEGRAL"], source.number())
    header["VALUE_UNIT"] = source.string()
    header["TIME_UNIT"] = source.string()
    if source.count(1) > 0:
        read_binary_geometry(output, source)
    output.numbers = list(source.take(f"{source.count(4)}i"))
    if source.string() != "HDR_END":
        raise ValueError("the header has no end")
    check_numbers(output)
    layout = f"{len(output.numbers) + 1}d"
    while len(data) - source.position >= struct.calcsize("<" + layout):
        record = source.take(layout)
        output.times.append(record[0])
        output.values.append(list(record[1:]))


def read_binary_geometry(output, source):
    for _ in range(source.count(9)):
        number, _ = source.take("ii")
        output.materials[number] = source.string()
    output.grid_x = source.doubles()
    output.grid_y = source.doubles()
    (output.thickness,) = source.doubles()
    for _ in range(source.count(40)):
        number, _, _, i, j, material = source.take("I4xddiiI4x")
        add_element(output, number, (i, j, material))
    for _ in range(source.count(40)):
        number, x, y, _, _, vertical = source.take("I4xddiiB7x")
        output.sides[number] = (x, y, vertical == 1)


def read_text(output, data):
    lines = data.decode("utf-8", "replace").split("\n")
    if lines[-1]:
        lines.pop()  # a record that is being written
    read_records(output, lines, read_header(output, lines))


def read_header(output, lines):
    """Fills header and geometry; returns the index of the first line of the records."""
    index = 1
    while index < len(lines) and lines[index].startswith("# "):
        key, _, value = lines[index][2:].partition("=")
        output.header[key.strip()] = value.strip()
        index += 1
    readers = {
        "TABLE  MATERIALS": read_materials,
        "TABLE  GRID": read_grid,
        "TABLE  ELEMENT_GEOMETRY": read_elements,
        "TABLE  SIDES_GEOMETRY": read_sides,
    }
    while index < len(lines):
        line = lines[index]
        if line.startswith(("ELEMENTS = ", "SIDES = ")):
            numbers = [int(word) for word in line.partition("=")[2].split()]
            output.numbers = numbers if output.has_geometry else []
            return index + 1
        if line in readers:
            end = index + 1
            while end < len(lines) and lines[end]:
                end += 1
            readers[line](output, lines[index + 1 : end])
            index = end
        index += 1
    raise ValueError("the header has no end")


def read_materials(output, rows):
    for row in rows:
        words = row.split(None, 2)
        output.materials[int(words[0])] = words[2].strip() if len(words) > 2 else ""


def read_grid(output, rows):
    output.grid_x = [float(word) for word in rows[0].split()]
    output.grid_y = [float(word) for word in rows[1].split()]
    output.thickness = float(rows[2])


def read_elements(output, rows):
    for row in rows:
        number, _, _, i, j, material = row.split()
        add_element(output, int(number), (int(i), int(j), int(material)))


def add_element(output, number, cell):
    if not (0 <= cell[0] < len(output.grid_x) and 0 <= cell[1] < len(output.grid_y)):
        raise ValueError(f"element {number} lies outside of the grid")
    output.elements[number] = cell


def read_sides(output, rows):
    for row in rows:
        number, x, y, _, _, vertical = row.split()
        output.sides[int(number)] = (float(x), float(y), vertical == "1")


def check_numbers(output):
    known = output.elements if output.is_field else output.sides
    for number in output.numbers:
        if number not in known:
            raise ValueError(f"number {number} has no geometry")


def read_records(output, lines, start):
    check_numbers(output)
    for index in range(start, len(lines)):
        words = lines[index].split()
        if not words:
            continue
        record = [float(word) for word in words]
        if len(record) - 1 != max(1, len(output.numbers)):
            raise ValueError(f"line {index + 1} has {len(record) - 1} values")
        output.times.append(record[0])
        output.values.append(record[1:])


def used_columns_and_rows(output):
    cells = [output.elements[number] for number in output.numbers]
    return {cell[0] for cell in cells}, {cell[1] for cell in cells}


def choose_kind(output, wanted):
    """The picture for a file: "series", "profile" or "map"."""
    if wanted == "map" and not (output.is_field and output.numbers):
        raise OutputError(f"{output.path}: a map needs a field file with single values of several elements")
    if wanted:
        return wanted
    if not output.is_field or len(output.numbers) <= MANY_VALUES:
        return "series"
    columns, rows = used_columns_and_rows(output)
    return "map" if len(columns) > 1 and len(rows) > 1 else "profile"


def entry_label(output, number):
    if output.is_field:
        i, j, material = output.elements[number]
        return f"element {number} ({i}, {j}) {output.materials.get(material, '')}".strip()
    x, y, vertical = output.sides[number]
    return f"{'vertical' if vertical else 'horizontal'} side {number} at {x:g}, {y:g} m"


def draw_series(axes, output):
    days, time_label = output.days()
    count = len(output.values[0])
    for column in range(count):
        label = entry_label(output, output.numbers[column]) if output.numbers else None
        series = [record[column] for record in output.values]
        axes.plot(days, series, label=label, linewidth=1.0, marker="." if len(days) == 1 else None)
    if output.numbers and count <= MANY_VALUES:
        axes.legend(fontsize="small")
    axes.set_xlabel(time_label)
    axes.set_ylabel(output.label)
    axes.grid(alpha=0.3)
    space = output.header.get("SPACE_TYPE", "")
    axes.set_title(f"{os.path.basename(output.path)}" + (f" ({space.lower()})" if space != "SINGLE" else ""))


def edges(output):
    """Edges of the columns from the left and of the rows from the top [m]."""
    x = [0.0]
    for width in output.grid_x:
        x.append(x[-1] + width)
    y = [sum(output.grid_y)]
    for height in output.grid_y:
        y.append(y[-1] - height)
    y[-1] = 0.0
    return x, y


def nearest_record(output, time):
    """Index of the record nearest to a time in days, of the last one without a time."""
    if time is None:
        return len(output.times) - 1
    days, _ = output.days()
    return min(range(len(days)), key=lambda index: abs(days[index] - time))


def time_text(output, index):
    days, label = output.days()
    return f"{days[index]:g} {label.partition('[')[2].rstrip(']')}"


def draw_profile(axes, output, time):
    x, y = edges(output)
    _, rows = used_columns_and_rows(output)
    along_x = len(rows) == 1
    cells = [output.elements[number] for number in output.numbers]
    if along_x:
        positions = [0.5 * (x[cell[0]] + x[cell[0] + 1]) for cell in cells]
    else:
        positions = [0.5 * (y[cell[1]] + y[cell[1] + 1]) for cell in cells]
    order = sorted(range(len(cells)), key=lambda entry: positions[entry])
    last = len(output.times) - 1
    if time is None:
        records = sorted({round(last * n / (PROFILES - 1)) for n in range(PROFILES)})
    else:
        records = [nearest_record(output, time)]
    for index in records:
        values = output.values[index]
        axes.plot([positions[n] for n in order], [values[n] for n in order], label=time_text(output, index))
    for before, behind in zip(order, order[1:]):
        if cells[before][2] != cells[behind][2]:
            joint = x[cells[behind][0]] if along_x else y[cells[behind][1] + 1]
            axes.axvline(joint, color="grey", linewidth=0.8)
    axes.legend(fontsize="small")
    axes.set_xlabel(axis_name(output, along_x))
    axes.set_ylabel(output.label)
    axes.grid(alpha=0.3)
    axes.set_title(os.path.basename(output.path))


def axis_name(output, along_x):
    if not along_x:
        return "y [m]"
    return "r [m]" if output.rotational else "x [m]"


def draw_map(axes, output, time):
    import numpy

    index = nearest_record(output, time)
    x, y = edges(output)
    cells = numpy.full((len(output.grid_y), len(output.grid_x)), numpy.nan)
    for number, value in zip(output.numbers, output.values[index]):
        i, j, _ = output.elements[number]
        cells[j, i] = value
    picture = axes.pcolormesh(x, y, numpy.ma.masked_invalid(cells), shading="flat", cmap="viridis")
    axes.figure.colorbar(picture, ax=axes, label=output.label)
    draw_material_boundaries(axes, output, x, y)
    if output.rotational:
        axes.axvline(0.0, color="black", linestyle="-.", linewidth=1.0)
    axes.set_aspect("equal")
    axes.set_xlabel(axis_name(output, True))
    axes.set_ylabel(axis_name(output, False))
    axes.set_title(f"{os.path.basename(output.path)}, {time_text(output, index)}")


def draw_material_boundaries(axes, output, x, y):
    material = {(i, j): m for i, j, m in output.elements.values()}
    lines = []
    for (i, j), own in material.items():
        if material.get((i + 1, j), own) != own:
            lines.append([(x[i + 1], y[j]), (x[i + 1], y[j + 1])])
        if material.get((i, j + 1), own) != own:
            lines.append([(x[i], y[j + 1]), (x[i + 1], y[j + 1])])
    from matplotlib.collections import LineCollection

    axes.add_collection(LineCollection(lines, colors="black", linewidths=0.6))


def draw(outputs, png, options):
    """Draws files one below the other into one picture."""
    import matplotlib

    matplotlib.use("Agg")
    from matplotlib import pyplot

    kinds = [choose_kind(output, options.kind) for output in outputs]
    figure, axes = pyplot.subplots(
        len(outputs), 1, figsize=(9, 5 * len(outputs)), squeeze=False, layout="constrained"
    )
    for (panel,), output, kind in zip(axes, outputs, kinds):
        if kind == "map":
            draw_map(panel, output, options.time)
        elif kind == "profile":
            draw_profile(panel, output, options.time)
        else:
            draw_series(panel, output)
    try:
        figure.savefig(png, dpi=120, format="png")
    except OSError as error:
        raise OutputError(f"{png}: {error.strerror}") from error
    finally:
        pyplot.close(figure)
    print(png)


def draw_directory(directory, options):
    """Draws every output file of a directory; returns the number of files that could not be drawn."""
    names = sorted(os.listdir(directory))
    paths = [os.path.join(directory, name) for name in names]
    paths = [path for path in paths if os.path.isfile(path) and is_output_file(path)]
    if not paths:
        raise OutputError(f"{directory}: holds no output files")
    failures = 0
    for path in paths:
        try:
            draw([read_output(path)], path + ".png", options)
        except OutputError as error:
            print(error, file=sys.stderr)
            failures += 1
    return failures


def parse_arguments(arguments):
    parser = argparse.ArgumentParser(
        description="Draws the output files of the solver as PNG pictures."
    )
    parser.add_argument("files", nargs="+", metavar="FILE", help="output file, or a directory of such files")
    parser.add_argument("-o", "--output", metavar="PNG", help="one picture for all files")
    kind = parser.add_mutually_exclusive_group()
    kind.add_argument("--map", dest="kind", action="store_const", const="map", help="map of a field")
    kind.add_argument("--series", dest="kind", action="store_const", const="series", help="lines over time")
    parser.add_argument("--time", type=float, metavar="T", help="time of map or profile [d], default: last")
    return parser.parse_args(arguments)


def main(arguments=None):
    options = parse_arguments(arguments)
    try:
        import matplotlib  # noqa: F401
    except ImportError:
        print("plot_output.py needs matplotlib: apt-get install python3-matplotlib", file=sys.stderr)
        return 1
    failures = 0
    files = []
    try:
        for name in options.files:
            if os.path.isdir(name):
                if options.output:
                    raise OutputError(f"{name}: -o takes files, a directory gets one picture for each file")
                failures += draw_directory(name, options)
            else:
                files.append(read_output(name))
        if options.output and files:
            draw(files, options.output, options)
        else:
            for output in files:
                draw([output], output.path + ".png", options)
    except OutputError as error:
        print(error, file=sys.stderr)
        return 1
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
