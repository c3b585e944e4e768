#!/usr/bin/python3
"""Tests of count_instructions.py without valgrind: what it makes of figures that it has counted."""

import contextlib
import io
import os
import sys
import tempfile
import unittest
from pathlib import Path
from unittest import mock

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), ".."))
import count_instructions  # noqa: E402

MADE = {"compiler": "GNU 12.2.0", "options": "-O2 -DNDEBUG"}
COUNTED = {"wall": 500.0, "square": 700.0}


class CountInstructions(unittest.TestCase):
    def check(self, stored, made=None):
        """Exit code and text of a comparison with these stored figures."""
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "figures.txt"
            count_instructions.store(path, stored, made or MADE)
            text = io.StringIO()
            with mock.patch.object(count_instructions, "count", return_value=(COUNTED, MADE)), \
                    mock.patch.object(sys, "argv", ["count_instructions", "--program", "counter", "--stored", str(path)]), \
                    mock.patch("shutil.which", return_value="valgrind"), contextlib.redirect_stdout(text):
                return count_instructions.main(), text.getvalue()

    def test_figures_within_a_tenth_pass(self):
        self.assertEqual(self.check({"wall": 500.0 * 1.09, "square": 700.0 * 0.93})[0], 0)

    def test_figure_that_is_a_fifth_off_fails_with_both_numbers_and_a_hint(self):
        for factor in 0.8, 1.2:
            code, text = self.check({"wall": 500.0 * factor, "square": 700.0})
            self.assertEqual(code, 1)
            self.assertIn(f"500.0 counted      {500.0 * factor:.1f} stored", text)
            self.assertIn("--store", text)

    def test_case_without_a_stored_figure_fails(self):
        self.assertEqual(self.check({"wall": 500.0})[0], 1)

    def test_stored_figure_without_a_case_fails(self):
        self.assertEqual(self.check({**COUNTED, "gone": 1.0})[0], 1)

    def test_another_compiler_is_not_compared(self):
        code, text = self.check({"wall": 1.0, "square": 1.0}, {**MADE, "compiler": "GNU 13.1.0"})
        self.assertEqual(code, count_instructions.CANNOT_COMPARE)
        self.assertIn("GNU 13.1.0", text)


if __name__ == "__main__":
    unittest.main()
