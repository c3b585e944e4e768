#!/usr/bin/python3
"""Runs the benchmarks and writes their results into docs/verification.md and docs/pictures.

    verify.py [--solver PROGRAM] [--check]

Each benchmark of examples/benchmarks runs in a temporary folder on three grids: that of its project file, one
with every two cells merged and one with every cell halved. --check compares only and writes nothing. Ends with
exit code 1 if a result leaves its band. Needs a built solver and python3-matplotlib.
"""

import argparse
import csv
import os
import shutil
import subprocess
import sys
import tempfile

import plot_output
from benchmark_tables import centres, interpolate, markdown_table, regrid, replace_block, signed

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
BENCHMARKS = os.path.join(ROOT, "examples", "benchmarks")
DOCUMENT = os.path.join(ROOT, "docs", "verification.md")
PICTURES = os.path.join(ROOT, "docs", "pictures")
GRIDS = (("cells merged in pairs", 0.5), ("of the project", 1), ("cells halved", 2))


# ---- runs ----


class Results:
    """Output files of one run."""

    def __init__(self, directory):
        self.directory = directory

    def record(self, file, time):
        """Values of the record at a time in the unit of the file."""
        output = plot_output.read_output(os.path.join(self.directory, file))
        return output, output.values[output.times.index(time)]

    def value(self, file, time):
        return self.record(file, time)[1][0]

    def profile(self, file, time):
        """Centres [m] and values."""
        output, values = self.record(file, time)
        return centres(output.grid_x), values

    def at(self, file, time, x):
        return interpolate(x, *self.profile(file, time))


def run(solver, folder, name, factor):
    with open(os.path.join(BENCHMARKS, name, name + ".vel"), encoding="utf-8") as stream:
        text = regrid(stream.read(), factor)
    place = os.path.join(folder, f"{name}_{factor}")
    os.mkdir(place)
    for file in os.listdir(os.path.join(BENCHMARKS, name)):
        if file.endswith(".ccd"):
            shutil.copy(os.path.join(BENCHMARKS, name, file), place)
    project = os.path.join(place, name + ".vel")
    with open(project, "w", encoding="utf-8") as stream:
        stream.write(text)
    done = subprocess.run([solver, "-x", "-v0", project], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"verify.py: {name} failed\n{done.stdout}{done.stderr}")
    return Results(os.path.join(place, name + ".results"))


def reference(name, file="reference.csv"):
    with open(os.path.join(BENCHMARKS, name, file), encoding="utf-8") as stream:
        rows = csv.DictReader(line for line in stream if not line.startswith("#"))
        return [{key: value if key == "quantity" else float(value) for key, value in row.items()} for row in rows]


# ---- the benchmarks: each makes tables of its results, pictures, and counts what leaves its band ----


class En15026:
    name = "en15026"
    files = {"w": "water_content.out", "T": "temperature.out"}

    def compare(self, results):
        rows = reference(self.name)
        for row in rows:
            row["value"] = results.at(self.files[row["quantity"]], row["day"], row["x_m"])
            row["margin"] = min(row["value"] - row["lowest"], row["highest"] - row["value"])
        return rows

    def failures(self, rows):
        return sum(row["margin"] < 0 for row in rows)

    def summary(self, rows):
        inside = f"{len(rows) - self.failures(rows)} of {len(rows)} values inside"
        return "EN 15026:2007, Annex A", "both tables of limits of the standard (published)", inside

    def tables(self, rows):
        blocks = {}
        for quantity, digits, limit_digits in (("w", 2, 1), ("T", 3, 1)):
            blocks[f"{self.name} {quantity}"] = markdown_table(
                ("day", "x [m]", "lower limit", "upper limit", "calculated", "margin", "converged", "difference"),
                [
                    (
                        f"{row['day']:g}",
                        f"{row['x_m']:g}",
                        f"{row['lowest']:.{limit_digits}f}",
                        f"{row['highest']:.{limit_digits}f}",
                        f"{row['value']:.{digits}f}",
                        f"{row['margin']:.2f}",
                        f"{row['reference']:.{digits}f}",
                        signed(row["value"] - row["reference"], digits),
                    )
                    for row in rows
                    if row["quantity"] == quantity
                ],
            )
        return blocks

    grid_head = ("values outside", "smallest margin w", "smallest margin T", "largest difference w", "largest difference T")

    def grid_row(self, rows):
        def of(quantity, key):
            return [key(row) for row in rows if row["quantity"] == quantity]

        def difference(row):
            return abs(row["value"] - row["reference"])

        def margin(row):
            return row["margin"]

        return (
            str(self.failures(rows)),
            f"{min(of('w', margin)):.2f}",
            f"{min(of('T', margin)):.2f}",
            f"{max(of('w', difference)):.3f}",
            f"{max(of('T', difference)):.4f}",
        )

    def draw(self, axes, results, rows):
        titles = {"w": ("water content [kg/m³]", 0.12), "T": ("temperature [°C]", 6.0)}
        for axis, (quantity, (title, depth)) in zip(axes, titles.items()):
            for day, colour in zip((7, 30, 365), ("C0", "C1", "C2")):
                x, values = results.profile(self.files[quantity], day)
                shown = [i for i in range(len(x)) if x[i] <= depth]
                axis.plot([x[i] for i in shown], [values[i] for i in shown], colour, label=f"{day} d")
                limits = [row for row in rows if row["quantity"] == quantity and row["day"] == day]
                axis.vlines(
                    [r["x_m"] for r in limits], [r["lowest"] for r in limits], [r["highest"] for r in limits], colour, lw=3
                )
            axis.set(xlabel="depth [m]", ylabel=title, xlim=(0, depth))
            axis.legend(title="bars: limits")


class HamstadDrying:
    name = "hamstad_drying"
    band = 0.1  # [kg/m3]
    hours = (100, 300, 1000)

    def compare(self, results):
        rows = reference(self.name)
        for row in rows:
            for hour in self.hours:
                row[hour] = results.at("water_content.out", hour, row["x_mm"] / 1000)
        self.totals = reference(self.name, "reference_integral.csv")
        for total in self.totals:
            total["calculated"] = (
                0.2 * results.value("mean_water_content.out", total["hour"]),
                -results.value("flow_left.out", total["hour"]),
                results.value("flow_right.out", total["hour"]),
            )
        return rows

    def errors(self, rows):
        return [row[hour] - row[f"w_{hour}h"] for row in rows for hour in self.hours]

    def failures(self, rows):
        return sum(abs(error) > self.band for error in self.errors(rows))

    def summary(self, rows):
        result = f"largest error {max(abs(error) for error in self.errors(rows)):.3f} kg/m³"
        return "HAMSTAD WP2, benchmark 2", f"{self.band:g} kg/m³ to the published, exact solution", result

    def tables(self, rows):
        head = ["x [mm]"] + [f"{hour} h {what}" for hour in self.hours for what in ("published", "calculated", "margin")]
        cells = []
        for row in rows:
            line = [f"{row['x_mm']:g}"]
            for hour in self.hours:
                margin = self.band - abs(row[hour] - row[f"w_{hour}h"])
                line += [f"{row[f'w_{hour}h']:.3f}", f"{row[hour]:.3f}", f"{margin:.3f}"]
            cells.append(line)
        totals = []
        for total in self.totals:
            line = [f"{total['hour']:g}"]
            exact = (total["water"], total["flow_left"], total["flow_right"])
            for value, wanted, form in zip(total["calculated"], exact, (".4f", ".4e", ".4e")):
                line += [f"{wanted:{form}}", f"{value:{form}}", signed(100 * (value / wanted - 1), 3) + " %"]
            totals.append(line)
        total_head = ["hour"]
        for what in ("water [kg/m²]", "flow left [kg/m²s]", "flow right [kg/m²s]"):
            total_head += [what, "calculated", "difference"]
        return {self.name: markdown_table(head, cells), f"{self.name} totals": markdown_table(total_head, totals)}

    grid_head = ("largest error [kg/m³]", "values outside")

    def grid_row(self, rows):
        return f"{max(abs(error) for error in self.errors(rows)):.4f}", str(self.failures(rows))

    def draw(self, axes, results, rows):
        for hour, colour in zip(self.hours, ("C0", "C1", "C2")):
            x, values = results.profile("water_content.out", hour)
            axes[0].plot([1000 * position for position in x], values, colour, label=f"{hour} h")
            x = [row["x_mm"] for row in rows]
            axes[0].plot(x, [row[f"w_{hour}h"] for row in rows], colour + "o", ms=4)
            axes[1].plot(x, [row[hour] - row[f"w_{hour}h"] for row in rows], colour + ".-")
        axes[0].set(xlabel="x [mm]", ylabel="water content [kg/m³]")
        axes[0].legend(title="dots: published")
        axes[1].set(xlabel="x [mm]", ylabel="calculated less published [kg/m³]")


class HamstadRain:
    name = "hamstad_rain"
    contact = 0.1  # [m] of the layers
    moments = (10, 24, 48, 52, 60, 64, 66, 72, 78, 84, 88, 92, 95, 98, 102, 106, 108, 110, 120)  # [h] in the table
    # name in the reference: unit, allowance beyond its spread, largest band
    quantities = {
        "T_outside": ("K", 0.1, 0.6),
        "T_contact": ("K", 0.1, 0.6),
        "T_inside": ("K", 0.1, 0.6),
        "w_outside": ("kg/m³", 0.3, 2.5),
        "w_contact_load_bearing": ("kg/m³", 0.3, 2.5),
        "w_contact_finishing": ("kg/m³", 0.3, 2.5),
        "w_inside": ("kg/m³", 0.3, 2.5),
        "M_load_bearing": ("kg/m²", 0.01, 0.1),
        "M_finishing": ("kg/m²", 0.01, 0.1),
    }

    def compare(self, results):
        series = {}
        for file in ("temperature", "water_content", "mean_water_load_bearing", "mean_water_finishing"):
            output = plot_output.read_output(os.path.join(results.directory, file + ".out"))
            series[file] = dict(zip(output.times, output.values))
            if file == "water_content":
                inner = sum(x < self.contact for x in centres(output.grid_x))  # first cell of the inner layer
        rows = reference(self.name)
        for row in rows:
            T, w, load_bearing, finishing = (values[row["hour"]] for values in series.values())
            mean = (T[inner - 1] + T[inner]) / 2
            water = (self.contact * load_bearing[0], 0.02 * finishing[0])
            row["values"] = dict(zip(self.quantities, (T[0], mean, T[-1], w[0], w[inner - 1], w[inner], w[-1], *water)))
        return rows

    def difference(self, row, quantity):
        return abs(row["values"][quantity] - row[quantity])

    def margin(self, row, quantity):
        _, allowance, largest = self.quantities[quantity]
        return min(row[f"spread_{quantity}"] + allowance, largest) - self.difference(row, quantity)

    def failures(self, rows):
        return sum(self.margin(row, quantity) < 0 for row in rows for quantity in self.quantities)

    def close(self, rows, quantity):
        return sum(self.difference(row, quantity) <= row[f"spread_{quantity}"] for row in rows)

    def summary(self, rows):
        count = len(rows) * len(self.quantities)
        close = sum(self.close(rows, quantity) for quantity in self.quantities)
        return (
            "HAMSTAD WP2, benchmark 4",
            "spread of the converged solution in each hour and 0.1 K, 0.3 kg/m³, 0.01 kg/m² beyond it; "
            "0.6 K, 2.5 kg/m³, 0.1 kg/m² at most",
            f"{count - self.failures(rows)} of {count} values met, {close} within the spread alone",
        )

    def tables(self, rows):
        cells = []
        for quantity, (unit, *_) in self.quantities.items():
            differences = sorted(self.difference(row, quantity) for row in rows)
            worst = max(rows, key=lambda row: self.difference(row, quantity))
            cells.append(
                (
                    f"{quantity.replace('_', ' ')} [{unit}]",
                    f"{differences[len(rows) // 2]:.3f}",
                    f"{differences[-1]:.3f}",
                    f"{worst['hour']:g}",
                    f"{worst[f'spread_{quantity}']:.3f}",
                    f"{min(self.margin(row, quantity) for row in rows):.3f}",
                    f"{self.close(rows, quantity)} of {len(rows)}",
                )
            )
        head = ("quantity", "median difference", "largest", "at hour", "spread then", "smallest margin", "within the spread")
        shown = ("T_outside", "T_inside", "w_outside", "w_contact_load_bearing", "w_contact_finishing", "w_inside")
        course = [
            [f"{row['hour']:g}"] + [f"{row['values'][name]:.2f} / {row[name]:.2f}" for name in shown]
            for row in rows
            if row["hour"] in self.moments
        ]
        course_head = ["hour"] + [name.replace("_", " ") for name in shown]
        return {self.name: markdown_table(head, cells), f"{self.name} course": markdown_table(course_head, course)}

    grid_head = ("outside the band", "largest difference T [K]", "largest difference w [kg/m³]", "largest difference M [kg/m²]")

    def grid_row(self, rows):
        def largest(kind):
            return max(self.difference(row, name) for row in rows for name in self.quantities if name.startswith(kind))

        return str(self.failures(rows)), f"{largest('T'):.3f}", f"{largest('w'):.3f}", f"{largest('M'):.4f}"

    def draw(self, axes, results, rows):
        hours = [row["hour"] for row in rows]
        for axis, shown in zip(axes, (("T_outside", "T_inside"), ("w_outside", "w_contact_load_bearing", "w_inside"))):
            for name, colour in zip(shown, ("C0", "C1", "C2")):
                label = name[2:].replace("_", " ")
                axis.plot(hours, [row["values"][name] for row in rows], colour, label=label)
                axis.plot(hours, [row[name] for row in rows], colour + ".", ms=3)
            axis.set(xlabel="time [h]", xlim=(0, 120))
            axis.legend(title="dots: converged", loc="upper left")
        axes[0].set(ylabel="temperature [°C]", ylim=(0, 40))
        axes[1].set(ylabel="water content [kg/m³]", ylim=(0, 280))


class HamstadInsulation:
    name = "hamstad_insulation"
    close = 1.0  # [kg/m3] to the converged solution, where the envelope is left
    band_RH = 0.003  # [-] to the converged solution

    def compare(self, results):
        rows = reference(self.name)
        for row in rows:
            x = row["x_mm"] / 1000
            row["w_value"] = results.at("water_content.out", 60, x)
            row["RH_value"] = results.at("humidity.out", 60, x) / 100
            row["T_value"] = results.at("temperature.out", 60, x)
            row["margin"] = min(row["w_value"] - row["w_lowest"], row["w_highest"] - row["w_value"])
        return rows

    def failures(self, rows):
        return sum(
            (row["margin"] < 0 and abs(row["w_value"] - row["w"]) > self.close)
            or abs(row["RH_value"] - row["RH"]) > self.band_RH
            for row in rows
        )

    def summary(self, rows):
        inside = sum(row["margin"] >= 0 for row in rows)
        return (
            "HAMSTAD WP2, benchmark 5",
            f"envelope of five published submissions, or {self.close:g} kg/m³ to the converged solution; "
            f"{self.band_RH:g} in relative humidity to the converged solution",
            f"{len(rows) - self.failures(rows)} of {len(rows)} values met, {inside} inside the envelope",
        )

    def tables(self, rows):
        head = ("x [mm]", "w lowest", "w highest", "w calculated", "margin", "w converged", "difference",
                "RH converged", "RH calculated", "margin to 0.003", "T converged", "T calculated")  # fmt: skip
        cells = [
            (
                f"{row['x_mm']:g}",
                f"{row['w_lowest']:.3f}",
                f"{row['w_highest']:.3f}",
                f"{row['w_value']:.3f}",
                signed(row["margin"], 3),
                f"{row['w']:.3f}",
                signed(row["w_value"] - row["w"], 3),
                f"{row['RH']:.4f}",
                f"{row['RH_value']:.4f}",
                f"{self.band_RH - abs(row['RH_value'] - row['RH']):.4f}",
                f"{row['T']:.3f}",
                f"{row['T_value']:.3f}",
            )
            for row in rows
        ]
        return {self.name: markdown_table(head, cells)}

    grid_head = ("outside the envelope", "outside the band", "largest difference w", "largest difference RH")

    def grid_row(self, rows):
        return (
            str(sum(row["margin"] < 0 for row in rows)),
            str(self.failures(rows)),
            f"{max(abs(row['w_value'] - row['w']) for row in rows):.3f}",
            f"{max(abs(row['RH_value'] - row['RH']) for row in rows):.5f}",
        )

    def draw(self, axes, results, rows):
        near = [row for row in rows if row["x_mm"] > 360]
        x = [row["x_mm"] for row in near]
        axes[0].fill_between(x, [r["w_lowest"] for r in near], [r["w_highest"] for r in near], color="0.8", label="envelope")
        for axis, file, key, factor in ((axes[0], "water_content.out", "w", 1), (axes[1], "humidity.out", "RH", 0.01)):
            places, values = results.profile(file, 60)
            axis.plot([1000 * place for place in places], [factor * value for value in values], "C0", label="calculated")
            axis.plot(x, [row[key] for row in near], "C1.", label="converged")
            for contact in (365, 380):
                axis.axvline(contact, color="0.5", lw=0.6)
            axis.set(xlabel="x [mm]", xlim=(355, 420))
            axis.legend()
        axes[0].set(ylabel="water content [kg/m³]", ylim=(0, 70))
        axes[1].set(ylabel="relative humidity", ylim=(0.65, 1))


def draw(benchmark, results, rows):
    import matplotlib

    matplotlib.use("Agg")
    import matplotlib.pyplot as plt

    figure, axes = plt.subplots(1, 2, figsize=(9, 3.4), constrained_layout=True)
    benchmark.draw(axes, results, rows)
    os.makedirs(PICTURES, exist_ok=True)
    figure.savefig(os.path.join(PICTURES, benchmark.name + ".png"), dpi=80, metadata={"Software": None})
    plt.close(figure)


def verify(benchmark, solver, folder, check):
    """Runs a benchmark on all grids. Returns its blocks for the document, its summary and its failures."""
    grids, blocks, summary, failures = [], {}, (), 0
    for grid, factor in GRIDS:
        results = run(solver, folder, benchmark.name, factor)
        rows = benchmark.compare(results)
        grids.append((grid, *benchmark.grid_row(rows)))
        if factor != 1:
            continue
        failures = benchmark.failures(rows)
        summary = benchmark.summary(rows)
        blocks = benchmark.tables(rows)
        if not check:
            draw(benchmark, results, rows)
    blocks[f"{benchmark.name} grids"] = markdown_table(("grid", *benchmark.grid_head), grids)
    print(f"{benchmark.name}: {failures} values outside their band")
    print(blocks[f"{benchmark.name} grids"])
    return blocks, summary, failures


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--solver", default=os.path.join(ROOT, "build", "release", "bin", "solver"))
    parser.add_argument("--check", action="store_true", help="compare only")
    options = parser.parse_args()
    solver = shutil.which(options.solver)
    if solver is None:
        sys.exit(f"verify.py: no program '{options.solver}'; build it with ./run.sh")
    summaries, failures = [], 0
    with open(DOCUMENT, encoding="utf-8") as stream:
        document = stream.read()
    with tempfile.TemporaryDirectory() as folder:
        for benchmark in (En15026(), HamstadDrying(), HamstadRain(), HamstadInsulation()):
            blocks, summary, failed = verify(benchmark, solver, folder, options.check)
            summaries.append(summary)
            failures += failed
            for name, content in blocks.items():
                document = replace_block(document, name, content)
    document = replace_block(document, "summary", markdown_table(("benchmark", "band", "result"), summaries, ":---"))
    if not options.check:
        with open(DOCUMENT, "w", encoding="utf-8") as stream:
            stream.write(document)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
