#!/usr/bin/env python3
"""What output costs: hourly single values of 20 quantities in 1,000 cells, as text and binary, against the same
run without any.

    bench/output_cost.py [--solver build/release/bin/solver] [--days 14] [--repeat 3] [--instructions]

The runs have the same steps, since outputs have no influence on them. Processor time is that of user and system, the
smallest of all repetitions. With --instructions valgrind counts those of user code instead.
"""

import argparse
import os
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from measure import run
from projects import ROOT, Case

FIELDS = [("TEMPER", "C"), ("ENERGY", "J/m3"), ("MOISTURE", "kg/m3"), ("WATERMASS", "kg/m3"), ("VAPORMASS", "kg/m3"),
          ("THETAL", "m3/m3"), ("ULIQU", "kg/kg"), ("RELHUM", "%"), ("GASPRESS", "Pa"), ("GASPRESS_DIFF", "Pa"),
          ("LIQUIDPRESS", "Pa"), ("CAPILLARYPRESS", "Pa"), ("VAPPRESS", "Pa"), ("SATDEGREE", "-"), ("DEW_POINT", "C"),
          ("OVHWATCONT", "m3/m3"), ("OVHWATMASS", "kg/m3"), ("HEATSOURCE", "W/m3"), ("HEATFLUXMEAN", "W/m2"),
          ("MOISTSOURCE", "kg/m3s")]
FORMS = ("none", "text", "binary")

# valgrind counts each byte of a long string instruction, by which newer processors fill and copy memory
SHORT_STRINGS = "glibc.cpu.hwcaps=-ERMS"


class OutputCase(Case):
    """1,000 cells with all fields in one form of output."""

    def __init__(self, days, form):
        super().__init__(40, 25, days)
        self.form = form

    def fields(self):
        return [(name, name, unit) for name, unit in FIELDS] if self.form != "none" else []

    def outputs(self):
        text = re.sub(r"(?m)^INTERVAL = .*$", "INTERVAL = 0 d 1 h", super().outputs())
        binary = "BINARY = YES" if self.form == "binary" else "BINARY = NO"
        return text.replace("PRECISION = 9", f"PRECISION = 6\n{binary}")


def instructions(solver, days, form):
    """All instructions of a run."""
    with tempfile.TemporaryDirectory() as folder:
        project = OutputCase(days, form).write(Path(folder), "AUTO")
        result = subprocess.run(["valgrind", "--tool=cachegrind", "--cache-sim=no", "--cachegrind-out-file=/dev/null",
                                 str(solver), "-x", "-v0", str(project)], check=True, capture_output=True, text=True,
                                env=dict(os.environ, GLIBC_TUNABLES=SHORT_STRINGS))
    return int(next(line for line in result.stderr.splitlines() if "refs:" in line).split()[-1].replace(",", ""))


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--solver", default=str(ROOT / "build/release/bin/solver"))
    parser.add_argument("--days", type=float, default=14.0)
    parser.add_argument("--repeat", type=int, default=3)
    parser.add_argument("--instructions", action="store_true", help="count instructions in place of time")
    arguments = parser.parse_args()
    if arguments.instructions:
        counts = {form: instructions(arguments.solver, arguments.days, form) for form in FORMS}
        for form in FORMS:
            share = 1.0 - counts["none"] / counts[form]
            print(f"{form:8} {counts[form] / 1e9:8.3f} thousand million instructions  {100 * share:5.1f} % of the run")
        return 0
    seconds, steps = {}, set()
    for _ in range(arguments.repeat):
        for form in FORMS:
            with tempfile.TemporaryDirectory() as folder:
                cost = run(arguments.solver, OutputCase(arguments.days, form).write(Path(folder), "AUTO"))
            seconds[form] = min(cost.seconds, seconds.get(form, cost.seconds))
            steps.add(cost.steps)
    if len(steps) != 1:
        print(f"Outputs have changed the steps: {steps}")
        return 1
    for form in FORMS:
        extra = seconds[form] - seconds["none"]
        print(f"{form:8} {seconds[form]:8.2f} s  {100 * extra / seconds[form]:5.1f} % of the run")
    return 0


if __name__ == "__main__":
    sys.exit(main())
