#!/usr/bin/python3
"""Tests of tools/check_restart.py and tools/check_faults.py: what they must see, with negative controls."""

import os
import sys
import tempfile
import unittest

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
import check_faults  # noqa: E402
import check_restart  # noqa: E402
from plot_output import OutputFile  # noqa: E402


def output(times, values, unit="C", kind="FIELD", quantity="Temperature"):
    header = {"TYPE": kind, "VALUE_UNIT": unit, "QUANTITY": quantity}
    return OutputFile("T.out", header=header, times=times, values=[[value] for value in values])


class Times(unittest.TestCase):
    whole = {"T.out": output([0.0, 1.0, 2.0], [20.0, 21.0, 22.0])}

    def fails(self, times):
        parts = {"T.out": output(times, [20.0] * len(times))}
        with self.assertRaises(check_restart.Failure):
            check_restart.check_times(self.whole, parts)

    def test_same_times_pass(self):
        check_restart.check_times(self.whole, {"T.out": output([0.0, 1.0, 2.0], [1.0, 1.0, 1.0])})

    def test_missing_time_fails(self):
        self.fails([0.0, 2.0])

    def test_double_time_fails(self):
        self.fails([0.0, 1.0, 1.0, 2.0])

    def test_missing_file_fails(self):
        with self.assertRaises(check_restart.Failure):
            check_restart.check_times(self.whole, {})


class Distances(unittest.TestCase):
    def distance(self, values, **form):
        actual = {"T.out": output([0.0, 1.0], values, **form)}
        truth = {"T.out": output([0.0, 1.0], [20.0, 26.85], **form)}
        return check_restart.distances(1e-5, truth, actual)["T.out"]

    def test_file_of_zeros_must_stay_so(self):
        zeros = {"T.out": output([0.0], [0.0], unit="kg")}
        self.assertEqual(check_restart.distances(1e-5, zeros, zeros)["T.out"], (0.0, 0.0))
        other = {"T.out": output([0.0], [1e-9], unit="kg")}
        self.assertEqual(check_restart.distances(1e-5, zeros, other)["T.out"][0], float("inf"))

    def test_temperatures_count_from_zero_kelvin(self):
        # 300 K at most: a tolerance of 1e-5 is 3 mK
        largest, mean = self.distance([20.0, 26.88])
        self.assertAlmostEqual(largest, 10.0, places=6)
        self.assertAlmostEqual(mean, 10.0 / 2.0 ** 0.5, places=6)

    def test_fluxes_follow_from_differences(self):
        largest, _ = self.distance([20.0, 26.85 + 300.0 * 26.85e-5], kind="FLUX", unit="W/m2")
        self.assertAlmostEqual(largest, 1.0, places=6)

    def test_a_cycle_is_just_allowed(self):
        largest, _ = self.distance([21.0, 26.85], quantity="Freeze-Thaw-Cycles", unit="---")
        self.assertAlmostEqual(largest, check_restart.FACTOR)

    def test_ten_tolerances_or_twice_the_uninterrupted_run_pass(self):
        for whole, good, bad in [((1.0, 1.0), (9.9, 9.9), (10.1, 1.0)), ((50.0, 9.0), (99.0, 17.9), (99.0, 18.1))]:
            check_restart.check_distances({"T.out": whole}, {"T.out": good})
            with self.assertRaises(check_restart.Failure):
                check_restart.check_distances({"T.out": whole}, {"T.out": bad})


class Faults(unittest.TestCase):
    def test_values_may_differ_by_the_steps_alone(self):
        whole = [[0.0, 100.0], [1.0, 200.0]]
        self.assertFalse(check_faults.differs([[0.0, 100.2], [1.0, 200.0]], whole))
        self.assertTrue(check_faults.differs([[0.0, 102.0], [1.0, 200.0]], whole))
        self.assertTrue(check_faults.differs([[0.0, 100.0]], whole))

    def test_message_needs_path_and_reason(self):
        self.assertTrue(check_faults.is_told("Cannot write '/x/y': Input/output error", "EIO", "/x"))
        self.assertFalse(check_faults.is_told("Cannot write '/x/y'", "EIO", "/x"))
        self.assertFalse(check_faults.is_told("Input/output error", "EIO", "/x"))

    def test_restart_file_must_be_complete(self):
        with tempfile.TemporaryDirectory() as folder:
            file = os.path.join(folder, "restart.txt")
            self.assertFalse(check_faults.complete_restart_file(folder))
            for text, complete in [("1.000\n1 2 3 \n4 5 6 \n", True), ("1.000\n1 2 3 \n4 5 \n", False), ("", False)]:
                with open(file, "w", encoding="ascii") as stream:
                    stream.write(text)
                self.assertEqual(check_faults.complete_restart_file(folder), complete)
            os.rename(file, file + ".backup")
            with open(file + ".backup", "w", encoding="ascii") as stream:
                stream.write("1.000\n1 2 3 \n4 5 6 \n")
            self.assertTrue(check_faults.complete_restart_file(folder))


if __name__ == "__main__":
    unittest.main()
