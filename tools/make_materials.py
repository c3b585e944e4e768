#!/usr/bin/env python3
"""Generates the material files that have moisture functions.

    python3 tools/make_materials.py [--directory database/DB_material_data]

Each curve over suction comes with its inverse on the same points: the program then inverts it without iteration,
which may fail at a kink of a table.

benchmark_materials.py holds the formulas of the benchmarks, common_materials.py the common materials with typical
values. The formulas are closed; a material file holds tables, between whose points the program interpolates
linearly. The points are placed so that, for the benchmarks, the interpolation stays within

* retention curve:       1e-5 of the saturation moisture content, outside the range of 1 Pa to 160 Pa
* liquid conductivity:   0.1 % (of the diffusivity of benchmark 2: exact)
* vapour conductivity:   0.05 % while more than 1 % of the pores is free of water, 0.5 % below
* thermal conductivity:  exact, the formulas are linear

and a table that misses this is not written. For the common materials the storage curve is kept within 1e-5 of
the saturation content plus 0.1 % of the value, the conductivities within 0.1 %; below a relative humidity of 5 %
the curves over suction fall as a power of the distance from dryness. In units of moisture the first line means 0.0015 kg/m3 for EN
15026, 0.0012 kg/m3 for benchmark 2 and at most 0.009 kg/m3 for benchmark 5: less than a hundredth of the
bands of the benchmarks.

Deviations from the formulas, all outside the range that the benchmarks reach:

* Between suctions of 1 Pa and 160 Pa, practically saturation, the retention curve runs smoothly to saturation.
  The program puts a polynomial in place of the curve below 100 Pa.
* Beyond a suction of 1e10 Pa, a relative humidity of 1e-32, the curve runs straight to dryness at 1e12 Pa.
* A liquid conductivity has to rise with the moisture content. Where a published one falls (in
  benchmark 5 brick around 300 kg/m3, insulation around 300 and 730 kg/m3; in benchmark 4 load bearing material at
  suctions above 4e7 Pa, where it is below 1e-27 s) the least deviating rising curve is taken: within 9 %, 14 %.
* The vapour conductivity of the formulas vanishes at saturation; it ends at one part in a million of the pores.

The vapour conductivity of the program does not depend on temperature, that of the benchmarks is proportional
to 1/T, 0.3 % per kelvin. It is taken at the mean temperature of the layer in which the moisture of the
benchmark moves; each file names it.
"""

import argparse
import pathlib

import benchmark_materials
import common_materials


def texts():
    """Pairs of file name and content."""
    for m in benchmark_materials.MATERIALS:
        yield f"{m['file']}.m6", benchmark_materials.material_text(m, benchmark_materials.make_tables(m))
    for m in common_materials.MATERIALS:
        yield f"{m['file']}.m6", common_materials.material_text(m)


def main():
    parser = argparse.ArgumentParser(description="Generates the material files that have moisture functions.")
    parser.add_argument("--directory", type=pathlib.Path, default=pathlib.Path("database/DB_material_data"))
    directory = parser.parse_args().directory
    for name, text in texts():
        (directory / name).write_text(text, encoding="utf-8")


if __name__ == "__main__":
    main()
