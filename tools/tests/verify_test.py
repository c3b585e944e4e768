#!/usr/bin/python3
"""Tests of verify.py that need neither the solver nor matplotlib."""

import os
import sys
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
import verify  # noqa: E402

PROJECT = "X_STEPS = 1 2 3 4 mm\nY_STEPS = 1 m\nRANGE = 0 0 1 0\nRANGE = 2 0 3 0\nRANGE = 3 0 3 0\n"


class Regrid(unittest.TestCase):
    def test_halved_cells_cover_the_same_ranges(self):
        self.assertEqual(
            verify.regrid(PROJECT, 2),
            "X_STEPS = 0.5 0.5 1 1 1.5 1.5 2 2 mm\nY_STEPS = 1 m\nRANGE = 0 0 3 0\nRANGE = 4 0 7 0\nRANGE = 6 0 7 0\n",
        )

    def test_merged_cells_cover_the_same_ranges(self):
        self.assertEqual(
            verify.regrid(PROJECT, 0.5),
            "X_STEPS = 3 7 mm\nY_STEPS = 1 m\nRANGE = 0 0 0 0\nRANGE = 1 0 1 0\nRANGE = 1 0 1 0\n",
        )

    def test_odd_number_of_cells_is_refused(self):
        with self.assertRaises(ValueError):
            verify.regrid("X_STEPS = 1 2 3 mm\n", 0.5)

    def test_factor_of_one_changes_nothing(self):
        self.assertEqual(verify.regrid(PROJECT, 1), PROJECT)


class Interpolation(unittest.TestCase):
    def test_centres_lie_in_the_middle_of_cells(self):
        self.assertEqual(verify.centres([2.0, 4.0, 2.0]), [1.0, 4.0, 7.0])

    def test_straight_line_is_met_between_and_beyond_the_centres(self):
        xs = [1.0, 4.0, 7.0]
        for x in (0.0, 1.0, 2.5, 4.0, 6.0, 8.0):
            self.assertAlmostEqual(verify.interpolate(x, xs, [2 * c + 1 for c in xs]), 2 * x + 1)

    def test_each_interval_has_its_own_slope(self):
        self.assertAlmostEqual(verify.interpolate(5.5, [1.0, 4.0, 7.0], [0.0, 0.0, 6.0]), 3.0)


class Document(unittest.TestCase):
    def test_block_is_replaced_between_its_markers_alone(self):
        document = "a\n<!-- begin t -->\nold\n<!-- end t -->\nb\n"
        self.assertEqual(
            verify.replace_block(document, "t", "new"), "a\n<!-- begin t -->\n\nnew\n\n<!-- end t -->\nb\n"
        )

    def test_missing_marker_is_refused(self):
        with self.assertRaises(ValueError):
            verify.replace_block("<!-- begin t -->\n", "t", "new")

    def test_table_has_a_line_per_row(self):
        self.assertEqual(verify.markdown_table(("a", "b"), [("1", "2")]), "| a | b |\n|---:|---:|\n| 1 | 2 |")

    def test_nothing_but_zero_has_no_sign(self):
        self.assertEqual([verify.signed(v, 2) for v in (0.001, -0.001, 0.01, -0.01)], ["0.00", "0.00", "+0.01", "-0.01"])


class Bands(unittest.TestCase):
    def test_value_beyond_a_limit_is_a_failure(self):
        self.assertEqual(verify.En15026().failures([{"margin": 0.0}, {"margin": -0.01}]), 1)

    def test_error_beyond_the_band_is_a_failure(self):
        row = {"w_100h": 1.0, "w_300h": 1.0, "w_1000h": 1.0, 100: 1.09, 300: 0.89, 1000: 1.11}
        self.assertEqual(verify.HamstadDrying().failures([row]), 2)

    def test_difference_beyond_the_spread_and_its_allowance_is_a_failure(self):
        benchmark = verify.HamstadRain()

        def row(difference, spread):
            values = {name: 10.0 for name in benchmark.quantities}
            spreads = {f"spread_{name}": spread for name in benchmark.quantities}
            return {**values, **spreads, "values": {**values, "w_outside": 10.0 + difference}}

        rows = [row(0.29, 0.0), row(0.31, 0.0), row(-0.49, 0.2), row(-0.51, 0.2), row(2.4, 100.0), row(2.6, 100.0)]
        self.assertEqual(benchmark.failures(rows), 3)
        self.assertEqual(benchmark.close(rows, "w_outside"), 2)

    def test_value_outside_the_envelope_must_be_close_to_the_converged_one(self):
        def row(margin, w, RH):
            return {"margin": margin, "w_value": w, "w": 5.0, "RH_value": RH, "RH": 0.8}

        rows = [row(0.1, 7.0, 0.8), row(-0.1, 5.9, 0.8), row(-0.1, 6.1, 0.8), row(0.1, 5.0, 0.804)]
        self.assertEqual(verify.HamstadInsulation().failures(rows), 2)


if __name__ == "__main__":
    unittest.main()
