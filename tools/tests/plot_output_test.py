#!/usr/bin/python3
"""Tests of plot_output.py; needs python3-matplotlib."""

import contextlib
import io
import os
import struct
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
import plot_output  # noqa: E402

HEADER = """# Velmora 5 Output file
# TYPE          = {type}
# PROJECT_FILE  = wall.vel
# CREATED       = Mon Jan  5 12:30:00 2015
# QUANTITY      = {quantity}
# SPACE_TYPE    = {space}
# TIME_TYPE     = NONE
# VALUE_UNIT    = {unit}
# TIME_UNIT     = h

"""


def mean_file(records="0            \t10\n24           \t12.5\n"):
    header = HEADER.format(type="FIELD", quantity="Temperature", space="MEAN", unit="C")
    return header + "ELEMENTS = 0\n\n\n" + records


def geometry(columns, rows, thickness):
    """Geometry of a grid of cells of 0.1 m x 0.2 m, the left column of brick and the others of wool."""
    text = "TABLE  MATERIALS\n1          255        Brick\n2          0          Wool, loose\n\nTABLE  GRID\n"
    text += "0.1 " * columns + "\n" + "0.2 " * rows + "\n" + f"{thickness:g}\n\nTABLE  ELEMENT_GEOMETRY\n"
    for number in range(columns * rows):
        i, j = number % columns, number // columns
        text += f"{number:<8} {0.1 * i + 0.05:<9g} {0.2 * (rows - j) - 0.1:<10g}\t {i:<5} {j:<5} {1 if i == 0 else 2}\n"
    text += "\nTABLE  SIDES_GEOMETRY\n0        0         0.1       \t 0      0      1    \n"
    return text + "1        0.1       0.1       \t 1      0      0    \n\n"


def field_file(columns, rows, thickness=1.0, times=(0, 24, 48)):
    count = columns * rows
    text = HEADER.format(type="FIELD", quantity="Temperature", space="SINGLE", unit="C")
    text += geometry(columns, rows, thickness) + "ELEMENTS = " + "".join(f"{n} " for n in range(count)) + "\n\n"
    for time in times:
        text += f"{time:<12} \t" + "".join(f"{time + n:<15} " for n in range(count)) + "\n"
    return text


def flux_file():
    text = HEADER.format(type="FLUX", quantity="Heat flux (conduction)", space="SINGLE", unit="W/m2")
    return text + geometry(2, 1, 1.0) + "SIDES = 0 1 \n\n1            \t-3.5            4               \n"


def binary_string(text):
    data = text.encode() + b"\0"
    return struct.pack("<I", len(data)) + data


def doubles(values):
    return struct.pack(f"<I{len(values)}d", len(values), *values)


def binary_of(text):
    """The binary form of a text file with geometry, as docs/formats.md describes it."""
    with tempfile.NamedTemporaryFile("w", suffix=".out") as stream:
        stream.write(text)
        stream.flush()
        source = plot_output.read_output(stream.name)
    header = source.header
    geometry = struct.pack("<I", len(source.materials))
    for number, name in source.materials.items():
        geometry += struct.pack("<iI", number, 0) + binary_string(name)
    geometry += doubles(source.grid_x) + doubles(source.grid_y) + doubles([source.thickness])
    geometry += struct.pack("<I", len(source.elements))
    for number, (i, j, material) in source.elements.items():
        geometry += struct.pack("<IIddiiII", number, 0, 0.0, 0.0, i, j, material, 0)
    geometry += struct.pack("<I", len(source.sides))
    for number, (x, y, vertical) in source.sides.items():
        geometry += struct.pack("<IIddiiII", number, 0, x, y, 0, 0, int(vertical), 0)
    data = b"# Velmora 5 Output file - binary 5.0" + bytes(4)
    data += struct.pack("<i", 0 if source.is_field else 1) + binary_string(header["PROJECT_FILE"])
    data += struct.pack("<I", 0) + binary_string(header["QUANTITY"]) + struct.pack("<ii", 0, 0)
    data += binary_string(header["VALUE_UNIT"]) + binary_string(header["TIME_UNIT"])
    data += struct.pack("<I", len(geometry)) + geometry
    data += struct.pack(f"<I{len(source.numbers)}i", len(source.numbers), *source.numbers)
    data += binary_string("HDR_END")
    for time, values in zip(source.times, source.values):
        data += struct.pack(f"<{len(values) + 1}d", time, *values)
    return data


class PlotOutputTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.addCleanup(self.folder.cleanup)

    def write(self, name, text):
        path = os.path.join(self.folder.name, name)
        with open(path, "wb") as stream:
            stream.write(text if isinstance(text, bytes) else text.encode())
        return path

    def run_tool(self, *arguments):
        """Exit code, lines on standard output, text on standard error."""
        out, err = io.StringIO(), io.StringIO()
        with contextlib.redirect_stdout(out), contextlib.redirect_stderr(err):
            code = plot_output.main(list(arguments))
        return code, out.getvalue().splitlines(), err.getvalue()

    def assert_png(self, path):
        with open(path, "rb") as stream:
            self.assertEqual(b"\x89PNG", stream.read(4))

    def test_binary_file_reads_like_its_text_form(self):
        for text in (field_file(3, 2), field_file(2, 1, thickness=0.0), flux_file()):
            from_text = plot_output.read_output(self.write("text.out", text))
            from_binary = plot_output.read_output(self.write("binary.out", binary_of(text)))
            from_binary.path = from_text.path
            from_binary.header["CREATED"] = from_text.header["CREATED"]
            self.assertEqual(from_text, from_binary)

    def test_binary_file_is_drawn(self):
        path = self.write("binary.out", binary_of(field_file(3, 2)))
        self.assertEqual((0, [path + ".png"], ""), self.run_tool(path))
        self.assert_png(path + ".png")

    def test_incomplete_binary_record_is_left_out(self):
        whole = binary_of(field_file(3, 2))
        output = plot_output.read_output(self.write("cut.out", whole[:-1]))
        self.assertEqual([0.0, 24.0], output.times)

    def kind(self, text, wanted=None):
        return plot_output.choose_kind(plot_output.read_output(self.write("kind.out", text)), wanted)

    def test_mean_file_has_one_value_per_record(self):
        output = plot_output.read_output(self.write("mean.out", mean_file()))
        self.assertEqual([0.0, 24.0], output.times)
        self.assertEqual([[10.0], [12.5]], output.values)
        self.assertEqual("Temperature [C]", output.label)

    def test_times_are_shown_in_days(self):
        output = plot_output.read_output(self.write("mean.out", mean_file()))
        self.assertEqual(([0.0, 1.0], "time [d]"), output.days())

    def test_time_of_a_special_unit_stays(self):
        text = mean_file().replace("= h", "= sqrt(h)")
        output = plot_output.read_output(self.write("mean.out", text))
        self.assertEqual(([0.0, 24.0], "time [sqrt(h)]"), output.days())

    def test_field_file_has_its_geometry(self):
        output = plot_output.read_output(self.write("field.out", field_file(2, 3)))
        self.assertEqual([0.1, 0.1], output.grid_x)
        self.assertEqual([0.2, 0.2, 0.2], output.grid_y)
        self.assertEqual({1: "Brick", 2: "Wool, loose"}, output.materials)
        self.assertEqual((1, 2, 2), output.elements[5])
        self.assertEqual([0, 1, 2, 3, 4, 5], output.numbers)

    def test_rows_are_counted_from_the_top(self):
        output = plot_output.read_output(self.write("field.out", field_file(1, 2)))
        x, y = plot_output.edges(output)
        self.assertEqual([0.0, 0.1], x)
        self.assertEqual([0.4, 0.2, 0.0], y)

    def test_thickness_zero_is_rotational(self):
        output = plot_output.read_output(self.write("field.out", field_file(2, 2, 0.0)))
        self.assertTrue(output.rotational)
        self.assertEqual("r [m]", plot_output.axis_name(output, True))

    def test_picture_follows_the_data(self):
        self.assertEqual("series", self.kind(mean_file()))
        self.assertEqual("series", self.kind(field_file(2, 2)))
        self.assertEqual("series", self.kind(flux_file()))
        self.assertEqual("profile", self.kind(field_file(20, 1)))
        self.assertEqual("profile", self.kind(field_file(1, 20)))
        self.assertEqual("map", self.kind(field_file(5, 4)))

    def test_map_can_be_asked_for(self):
        self.assertEqual("map", self.kind(field_file(2, 2), "map"))

    def test_nearest_record_is_taken(self):
        output = plot_output.read_output(self.write("field.out", field_file(2, 2)))
        self.assertEqual(2, plot_output.nearest_record(output, None))
        self.assertEqual(1, plot_output.nearest_record(output, 1.2))
        self.assertEqual(0, plot_output.nearest_record(output, -5.0))

    def test_picture_lies_beside_its_file(self):
        path = self.write("field.out", field_file(5, 4))
        self.assertEqual((0, [path + ".png"], ""), self.run_tool(path))
        self.assert_png(path + ".png")

    def test_every_kind_is_drawn(self):
        for name, text, options in (
            ("mean.out", mean_file(), []),
            ("flux.out", flux_file(), []),
            ("profile.out", field_file(20, 1), []),
            ("column.out", field_file(1, 20), ["--time", "1"]),
            ("map.out", field_file(3, 2), ["--map", "--time", "1"]),
            ("round.out", field_file(3, 2, 0.0), ["--map"]),
            ("series.out", field_file(5, 4), ["--series"]),
        ):
            path = self.write(name, text)
            self.assertEqual((0, [path + ".png"], ""), self.run_tool(path, *options))
            self.assert_png(path + ".png")

    def test_several_files_share_one_picture(self):
        paths = [self.write("a.out", mean_file()), self.write("b.out", flux_file())]
        png = os.path.join(self.folder.name, "all.png")
        self.assertEqual((0, [png], ""), self.run_tool(*paths, "-o", png))
        self.assert_png(png)
        self.assertFalse(os.path.exists(paths[0] + ".png"))

    def test_directory_draws_its_output_files_only(self):
        self.write("constr.txt", "0 1 2 0\n")
        paths = [self.write("a.out", mean_file()), self.write("b.out", flux_file())]
        self.assertEqual((0, [path + ".png" for path in paths], ""), self.run_tool(self.folder.name))

    def test_directory_goes_on_after_a_bad_file(self):
        bad = self.write("a.out", mean_file("0            \t1 2 3\n"))
        good = self.write("b.out", flux_file())
        code, names, error = self.run_tool(self.folder.name)
        self.assertEqual((1, [good + ".png"]), (code, names))
        self.assertIn(bad, error)

    def test_directory_without_output_files_fails(self):
        self.write("constr.txt", "0 1 2 0\n")
        code, _, error = self.run_tool(self.folder.name)
        self.assertEqual((1, f"{self.folder.name}: holds no output files\n"), (code, error))

    def test_unreadable_files_fail_with_their_name(self):
        no_end = HEADER.format(type="FIELD", quantity="Temperature", space="MEAN", unit="C")
        for text, reason in (
            (b"\xff\x00 nonsense", "is not an output file of the solver"),
            (b"", "is not an output file of the solver"),
            (b"# Velmora 5 Output file - binary 5.0\0\0\0\0", "damaged output file"),
            (binary_of(flux_file())[:300], "damaged output file"),
            (mean_file(""), "has no records yet"),
            (no_end, "damaged output file (the header has no end)"),
            (mean_file("0            \t1 2\n"), "line 14 has 2 values"),
            (mean_file("0            \tx\n"), "damaged output file"),
            (field_file(2, 2).replace("ELEMENTS = 0 ", "ELEMENTS = 9 "), "number 9 has no geometry"),
            (field_file(2, 2).replace("\n0.1 0.1 \n", "\n0.1 \n"), "lies outside of the grid"),
        ):
            path = self.write("bad.out", text)
            code, names, error = self.run_tool(path)
            self.assertEqual((1, []), (code, names), reason)
            self.assertIn(f"{path}: ", error)
            self.assertIn(reason, error)

    def test_missing_file_fails_with_its_name(self):
        path = os.path.join(self.folder.name, "missing.out")
        self.assertEqual((1, [], f"{path}: No such file or directory\n"), self.run_tool(path))

    def test_map_of_a_mean_fails(self):
        code, _, error = self.run_tool(self.write("mean.out", mean_file()), "--map")
        self.assertEqual(1, code)
        self.assertIn("a map needs a field file", error)

    def test_record_that_is_being_written_is_left_out(self):
        text = mean_file() + "48           \t1"
        self.assertEqual([0.0, 24.0], plot_output.read_output(self.write("mean.out", text)).times)

    def test_picture_that_cannot_be_written_fails(self):
        png = os.path.join(self.folder.name, "nowhere", "a.png")
        code, _, error = self.run_tool(self.write("mean.out", mean_file()), "-o", png)
        self.assertEqual((1, f"{png}: No such file or directory\n"), (code, error))


if __name__ == "__main__":
    unittest.main()
