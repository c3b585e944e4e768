#!/usr/bin/python3
"""Tests of make_materials.py and of the tables it makes."""

import math
import os
import pathlib
import sys
import unittest

TOOLS = pathlib.Path(os.path.abspath(__file__)).parent.parent
DATABASE = TOOLS.parent / "database" / "DB_material_data"
sys.path.insert(0, str(TOOLS))
import make_materials  # noqa: E402
import material_tables  # noqa: E402


def same_word(a, b):
    """Numbers may differ by the last digits of another mathematical library."""
    try:
        return math.isclose(float(a), float(b), rel_tol=1e-9)
    except ValueError:
        return a == b


def same_text(a, b):
    a, b = a.split(), b.split()
    return len(a) == len(b) and all(map(same_word, a, b))


class Files(unittest.TestCase):
    def test_shipped_files_are_what_the_script_makes(self):
        names = []
        for name, text in make_materials.texts():
            self.assertTrue(same_text((DATABASE / name).read_text(encoding="utf-8"), text), name)
            names.append(name)
        self.assertEqual(len(names), 16)

    def test_comparison_finds_another_number_and_another_word(self):
        self.assertTrue(same_text("a 1.0000000000001", "a 1"))
        self.assertFalse(same_text("a 1.00001", "a 1"))
        self.assertFalse(same_text("a 1", "b 1"))
        self.assertFalse(same_text("a 1", "a 1 2"))


class Tables(unittest.TestCase):
    def test_points_keep_the_tolerance(self):
        xs = material_tables.place_points(math.exp, 0.0, 3.0, lambda x: 0.01)
        self.assertEqual((xs[0], xs[-1]), (0.0, 3.0))
        for a, b in zip(xs, xs[1:]):
            self.assertTrue(material_tables.meets(math.exp, a, b, lambda x: 0.0105))
        self.assertGreater(len(xs), 5)

    def test_interval_that_is_too_long_is_found(self):
        self.assertTrue(material_tables.meets(math.exp, 0.0, 0.1, lambda x: 0.01))
        self.assertFalse(material_tables.meets(math.exp, 0.0, 1.0, lambda x: 0.01))

    def test_straight_line_needs_two_points(self):
        self.assertEqual(material_tables.place_points(lambda x: 2 * x, 0.0, 3.0, lambda x: 1e-9), [0.0, 3.0])

    def test_table_that_is_too_coarse_is_refused(self):
        with self.assertRaises(SystemExit):
            material_tables.checked("coarse", math.exp, [(0.0, 1.0), (3.0, math.exp(3))], lambda x: 0.01)

    def test_falling_part_becomes_the_mean_of_its_bounds(self):
        points = material_tables.rising([(0, 1.0), (1, 3.0), (2, 2.0), (3, 4.0)])
        self.assertEqual(points, [(0, 1.0), (1, 2.5), (2, 2.5), (3, 4.0)])

    def test_rising_table_stays(self):
        self.assertEqual(material_tables.rising([(0, 1.0), (1, 3.0)]), [(0, 1.0), (1, 3.0)])

    def test_numbers_read_back(self):
        for value in (0.1 + 0.2, 146, 1e-17, -12.5):
            self.assertEqual(float(material_tables.number(value)), value)
        self.assertEqual(material_tables.number(146), "146")


if __name__ == "__main__":
    unittest.main()
