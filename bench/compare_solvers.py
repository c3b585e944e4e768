#!/usr/bin/env python3
"""Runs whole projects with the band matrix and with the default linear solver in turn and prints the ratio of
their processor times, their steps, their peak memory, and by how much their results differ.

    bench/compare_solvers.py [--solver build/release/bin/solver] [--repeat 3] [--markdown] [case ...]
    bench/compare_solvers.py --growth                    how the time grows from 20 x 20 to 80 x 80 cells
    bench/compare_solvers.py --before OTHER_PROGRAM ...  a third column: another version of the program

Processor time is that of user and system; the smallest of all repetitions counts. Only ratios within one run of this
script mean anything.
"""

import argparse
import math
import sys
import tempfile
from pathlib import Path

from measure import largest_difference, run
from projects import ROOT, CapillaryWall, Case, ExampleCase

DECEMBER = 334
CASES = {
    "chain": Case(100, 1, 365),
    "chain_moisture": Case(100, 1, 90, "MOISTURE"),
    "chain_energy": Case(100, 1, 365, "ENERGY"),
    "chain_ice": Case(100, 1, 30, "ENERGY MOISTURE ICE", DECEMBER),
    "chain_air": Case(100, 1, 30, "ENERGY MOISTURE AIR"),
    "chain_pollutant": Case(100, 1, 30, "ENERGY MOISTURE POLLUTANT"),
    "square20": Case(20, 20, 8),
    "square40": Case(40, 40, 1),
    "square80": Case(80, 80, 0.1),
    "strip": Case(200, 10, 2),
    "square20_moisture": Case(20, 20, 8, "MOISTURE"),
    "square40_energy": Case(40, 40, 4, "ENERGY"),
    "square20_ice": Case(20, 20, 4, "ENERGY MOISTURE ICE", DECEMBER),
    "square20_air": Case(20, 20, 4, "ENERGY MOISTURE AIR"),
    "square20_pollutant": Case(20, 20, 8, "ENERGY POLLUTANT"),
    "capillary_wall": CapillaryWall(),
    "outer_wall": ExampleCase("outer_wall/outer_wall.vel", ("temperature_profile", "heat_flux_inside")),
    "floor_covering": ExampleCase("floor_covering/floor_covering.vel", ("density_profile", "surface_temperature")),
    "west_wall": ExampleCase("west_wall/west_wall.vel", ("temperature_profile", "water_content")),
}
GROWTH_DAYS = 1
GROWTH = {f"square{n}": Case(n, n, GROWTH_DAYS) for n in (20, 40, 80)}
BEFORE = "before"


class Comparison:
    """A case run by each method, the methods in turn and all of it repeatedly."""

    def __init__(self, name, case, solvers, repeat, folder):
        """`solvers`: program by method."""
        self.name, self.case = name, case
        self.costs = {}
        self.outputs = {}
        for turn in range(repeat):
            for method, solver in solvers.items():
                home = Path(folder) / f"{name}_{method}"
                home.mkdir(exist_ok=True)
                cost = run(solver, case.write(home, "BAND" if method == BEFORE else method))
                if turn > 0:
                    cost.seconds = min(cost.seconds, self.costs[method].seconds)
                self.costs[method] = cost
                self.outputs[method] = home / "case.results"

    def ratio(self, method, base):
        return self.costs[base].seconds / self.costs[method].seconds

    def differences(self, method, base):
        """Largest difference and size of the values of each output."""
        return {name: largest_difference(self.outputs[base] / f"{name}.out", self.outputs[method] / f"{name}.out")
                for name, _, _ in self.case.fields()}


def text_line(comparison, method, base):
    cost = comparison.costs[method]
    line = (f"{comparison.name:18} {method:6} {cost.seconds:8.2f} s  ratio {comparison.ratio(method, base):6.2f}  "
            f"{cost.memory:7.1f} MB  {cost.steps:7} steps {cost.evaluations:8} evaluations ")
    for name, (difference, size) in comparison.differences(method, base).items():
        line += f" d{name} {difference:.2g} of {size:.3g}"
    return line


def markdown_head(methods):
    base, others = methods[0], methods[1:]
    cells = ["Case", "Cells", "Days", f"{base}, CPU time"]
    for method in others:
        cells += [f"{method}, CPU time", "Ratio", "Steps", "Peak memory"]
    return "| " + " | ".join(cells) + " |\n|" + "---|" * len(cells)


def markdown_line(comparison, methods):
    base, others = methods[0], methods[1:]
    case, first = comparison.case, comparison.costs[base]
    size = f"{case.nx} x {case.ny}" if case.ny > 1 else f"{case.nx}"
    cells = [f"`{comparison.name}`", size, f"{case.days}", f"{first.seconds:.2f} s"]
    for method in others:
        cost = comparison.costs[method]
        cells += [f"{cost.seconds:.2f} s", f"{comparison.ratio(method, base):.1f}", f"{first.steps} / {cost.steps}",
                  f"{first.memory:.0f} / {cost.memory:.0f} MB"]
    return "| " + " | ".join(cells) + " |"


def exponent(small, large):
    """Of the growth of the time with the number of cells; small and large are (cells, seconds)."""
    return math.log(large[1] / small[1]) / math.log(large[0] / small[0])


def print_growth(comparisons, methods):
    for method in methods:
        points = [(c.case.cells, c.costs[method].seconds) for c in comparisons]
        print(f"{method}: {GROWTH_DAYS} days take " + ", ".join(f"{s:.3f} s with {n} cells" for n, s in points)
              + f"; growth exponent {exponent(points[0], points[-1]):.2f}")
        per_step = [(c.case.cells, c.costs[method].seconds / c.costs[method].steps) for c in comparisons]
        print(f"{method}: exponent of the time per step {exponent(per_step[0], per_step[-1]):.2f}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n\n")[0])
    parser.add_argument("--solver", default=str(ROOT / "build/release/bin/solver"))
    parser.add_argument("--before", help="program of another version, run with its plain method")
    parser.add_argument("--methods", nargs="+",
                        help="the first one is the base of all ratios; default: BAND AUTO, AUTO alone with --growth")
    parser.add_argument("--repeat", type=int, default=1)
    parser.add_argument("--markdown", action="store_true", help="print a table for docs/performance.md")
    parser.add_argument("--growth", action="store_true")
    parser.add_argument("cases", nargs="*", metavar="case", help=", ".join(CASES))
    arguments = parser.parse_args()
    chosen = arguments.methods or (["AUTO"] if arguments.growth else ["BAND", "AUTO"])
    unknown = [name for name in arguments.cases if name not in CASES]
    if unknown:
        parser.error(f"no such case: {' '.join(unknown)}")
    solvers = {BEFORE: arguments.before} if arguments.before else {}
    solvers |= {method: arguments.solver for method in chosen}
    methods = list(solvers)
    cases = GROWTH if arguments.growth else {name: CASES[name] for name in arguments.cases or CASES}
    comparisons = []
    if arguments.markdown:
        print(markdown_head(methods))
    for name, case in cases.items():
        with tempfile.TemporaryDirectory() as folder:
            comparison = Comparison(name, case, solvers, arguments.repeat, folder)
            if arguments.markdown:
                print(markdown_line(comparison, methods), flush=True)
            else:
                for method in methods:
                    print(text_line(comparison, method, methods[0]), flush=True)
            comparisons.append(comparison)
    if arguments.growth:
        print_growth(comparisons, methods)
    return 0


if __name__ == "__main__":
    sys.exit(main())
