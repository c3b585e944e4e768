#!/usr/bin/python3
"""Tests of bench/compare_answers.py without the solver: what it makes of two output files."""

import os
import sys
import unittest

HERE = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(HERE, "..", "..", "bench"))
import compare_answers  # noqa: E402
from compare_answers import plot_output  # noqa: E402

PROJECT = "[INIT]\n[GENERAL]\nDURATION = 365 d\n[SOLVER_SETTINGS]\n[CVODE_SOLVER_SETTINGS]\nREL_TOL = 1e-6\n"


def output(quantity, unit, values, times=(0.0, 1.0)):
    header = {"TYPE": "FIELD", "QUANTITY": quantity, "VALUE_UNIT": unit}
    return plot_output.OutputFile("a.out", header=header, times=list(times), values=values)


class CompareAnswers(unittest.TestCase):
    def test_temperature_beyond_five_thousandths_of_a_kelvin_is_not_allowed(self):
        for change, allowed in (4e-3, True), (6e-3, False):
            difference = compare_answers.compare_output(output("Temperature", "C", [[20.0], [10.0]]),
                                                        output("Temperature", "C", [[20.0], [10.0 + change]]))
            self.assertEqual(difference.kind, "K")
            self.assertEqual(difference.share <= 1.0, allowed)

    def test_water_content_beyond_five_ten_thousandths_of_its_value_is_not_allowed(self):
        for change, allowed in (4e-4, True), (6e-4, False):
            difference = compare_answers.compare_output(output("Moisture mass density", "kg/m3", [[100.0, 1.0]], [0.0]),
                                                        output("Moisture mass density", "kg/m3", [[100.0, 1.0 + change]], [0.0]))
            self.assertEqual(difference.kind, "water")
            self.assertEqual(difference.share <= 1.0, allowed)

    def test_value_that_is_no_number_is_an_error(self):
        for values in [[float("nan")], [1.0]], [[1.0], [float("nan")]]:
            with self.assertRaises(RuntimeError):
                compare_answers.compare_output(output("Temperature", "C", [[1.0], [1.0]]), output("Temperature", "C", values))

    def test_other_output_times_are_an_error(self):
        with self.assertRaises(RuntimeError):
            compare_answers.compare_output(output("Temperature", "C", [[1.0], [1.0]]),
                                           output("Temperature", "C", [[1.0], [1.0]], [0.0, 2.0]))

    def test_project_has_its_method_tolerance_and_duration(self):
        text = compare_answers.prepared(PROJECT, "KLU", 2, 0.1)
        self.assertIn("LINEAR_SOLVER = KLU\nUSE_MONITORS_FILE = YES\nREL_TOL = 1e-07\n", text)
        self.assertNotIn("REL_TOL = 1e-6", text)
        self.assertIn("DURATION = 2 d", text)


if __name__ == "__main__":
    unittest.main()
