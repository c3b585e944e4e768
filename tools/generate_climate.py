#!/usr/bin/env python3
"""Generates the climate series of the climate database: one synthetic year, hour by hour.

    python3 tools/generate_climate.py [--directory database/DB_climate_data]

writes

* germany_temperature.ccd: outdoor air temperature. It is made from
  - the monthly means below, joined by an annual course that keeps them,
  - a daily course with its maximum at three in the afternoon, its range depending on month and weather,
  - deviations from day to day: a first order autoregressive process.
* germany_indoor_temperature.ccd: temperature of a room in that climate, after EN 15026, annex C:
  20 C while the daily mean outdoors is below 10 C, 25 C while it is above 20 C, linear in between.

The year has 365 days and closes: the value of its last point equals that of its first. The series are
synthetic; they have the mean and the variability of the climate but are no record of any place or year.

Monthly means: area mean of the air temperature in Germany, reference period 1991-2020, as quoted by
Deutscher Wetterdienst (DWD) in its monthly press releases "Deutschlandwetter" of 2023; mean of the year
9.3 C. The other figures are round values chosen for Central European lowlands.

The random numbers come from a generator of this file, so that every version of Python writes the same
bytes.
"""

import argparse
import math
import pathlib

MONTH_DAYS = (31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31)
MONTHLY_MEANS = (0.9, 1.5, 4.6, 9.0, 13.1, 16.4, 18.3, 18.0, 13.8, 9.4, 4.8, 1.8)  # [C]

# Half the difference between the highest and lowest temperature of an average day [K].
DAILY_AMPLITUDES = (2.5, 3.0, 4.5, 5.5, 5.5, 5.5, 5.5, 5.5, 5.0, 4.0, 2.5, 2.0)

# Standard deviation of the daily means in midwinter and midsummer [K], correlation of successive days.
DEVIATION_WINTER, DEVIATION_SUMMER = 4.2, 3.0
CORRELATION = 0.78

# A day's amplitude may be smaller (overcast) or larger (clear) than the average by this share.
AMPLITUDE_SPREAD = 0.5

DAYS = sum(MONTH_DAYS)
HOURS = 24 * DAYS
SEED = 19910101


class Random:
    """Linear congruential generator modulo 2^64; the upper half of the state is used."""

    def __init__(self, seed):
        self.state = seed

    def uniform(self):
        """Uniformly distributed in 0..1."""
        self.state = (6364136223846793005 * self.state + 1442695040888963407) % 2**64
        return (self.state >> 32) / 2**32

    def normal(self):
        """Mean 0, variance 1: the sum of twelve uniform numbers, near enough to a normal distribution."""
        return sum(self.uniform() for _ in range(12)) - 6.0


def month_starts():
    """First hour of each month, and the hour after the year."""
    starts = [0]
    for days in MONTH_DAYS:
        starts.append(starts[-1] + 24 * days)
    return starts


def monthly_averages(series):
    starts = month_starts()
    return [sum(series[a:b]) / (b - a) for a, b in zip(starts, starts[1:])]


def periodic_line(nodes, values, hour):
    """Linear interpolation between the nodes (hours of the year), across the end of the year."""
    n = len(nodes)
    right = next((i for i in range(n) if nodes[i] > hour), n)
    left_hour = nodes[right - 1] - (HOURS if right == 0 else 0)
    right_hour = nodes[right % n] + (HOURS if right == n else 0)
    share = (hour - left_hour) / (right_hour - left_hour)
    return (1.0 - share) * values[right - 1] + share * values[right % n]


def solve(matrix, right_side):
    """Gaussian elimination with the largest pivot of the column."""
    rows = [list(row) + [value] for row, value in zip(matrix, right_side)]
    n = len(rows)
    for column in range(n):
        pivot = max(range(column, n), key=lambda r: abs(rows[r][column]))
        rows[column], rows[pivot] = rows[pivot], rows[column]
        for r in range(column + 1, n):
            factor = rows[r][column] / rows[column][column]
            rows[r] = [a - factor * b for a, b in zip(rows[r], rows[column])]
    result = [0.0] * n
    for r in reversed(range(n)):
        known = sum(rows[r][c] * result[c] for c in range(r + 1, n))
        result[r] = (rows[r][n] - known) / rows[r][r]
    return result


def annual_course(means):
    """Hourly course, linear between the middles of the months, that has the given monthly means."""
    starts = month_starts()
    nodes = [(a + b) / 2 for a, b in zip(starts, starts[1:])]
    months = len(means)
    units = [[1.0 if i == j else 0.0 for i in range(months)] for j in range(months)]
    shapes = [[periodic_line(nodes, unit, hour) for hour in range(HOURS)] for unit in units]
    averages = [monthly_averages(shape) for shape in shapes]
    matrix = [[averages[j][i] for j in range(months)] for i in range(months)]
    weights = solve(matrix, means)
    return [periodic_line(nodes, weights, hour) for hour in range(HOURS)]


def day_to_hours(values):
    """Hourly course of daily values that hold at noon."""
    course = []
    for hour in range(HOURS):
        position = (hour - 12) / 24
        day = math.floor(position)
        share = position - day
        course.append((1.0 - share) * values[day % DAYS] + share * values[(day + 1) % DAYS])
    return course


def daily_deviations(random):
    """Deviation of each day from the annual course [K]. The process runs twice over the same impulses, so
    that it has forgotten its start and the end of the year fits the beginning."""
    impulses = [random.normal() * math.sqrt(1.0 - CORRELATION**2) for _ in range(DAYS)]
    state = 0.0
    states = []
    for impulse in impulses * 2:
        state = CORRELATION * state + impulse
        states.append(state)
    deviations = []
    for day, value in enumerate(states[DAYS:]):
        winter = 0.5 * (1.0 + math.cos(2.0 * math.pi * (day - 15) / DAYS))
        deviations.append(value * (DEVIATION_SUMMER + (DEVIATION_WINTER - DEVIATION_SUMMER) * winter))
    return deviations


def daily_shape():
    """Course of a day with mean 0 and half range 1. The second harmonic moves the minimum from three in
    the night towards sunrise."""
    angle = 2.0 * math.pi / 24
    raw = [math.cos(angle * (h - 15)) + 0.25 * math.cos(2.0 * angle * (h - 13.5)) for h in range(24)]
    half_range = (max(raw) - min(raw)) / 2
    return [value / half_range for value in raw]


def outdoor_temperature():
    random = Random(SEED)
    annual = annual_course(MONTHLY_MEANS)
    deviations = day_to_hours(daily_deviations(random))
    amplitudes = annual_course(DAILY_AMPLITUDES)
    clearness = day_to_hours(
        [1.0 + AMPLITUDE_SPREAD * (2.0 * random.uniform() - 1.0) for _ in range(DAYS)]
    )
    shape = daily_shape()
    weather = [deviations[h] + amplitudes[h] * clearness[h] * shape[h % 24] for h in range(HOURS)]
    surplus = annual_course(monthly_averages(weather))
    return [annual[h] + weather[h] - surplus[h] for h in range(HOURS)]


def indoor_temperature(outdoor):
    """EN 15026, annex C, on daily means."""
    means = [sum(outdoor[24 * day : 24 * day + 24]) / 24 for day in range(DAYS)]
    return day_to_hours([20.0 + 5.0 * min(max((mean - 10.0) / 10.0, 0.0), 1.0) for mean in means])


def write_ccd(path, comment, series):
    lines = ["# " + line for line in comment] + ["TEMPER C", ""]
    for hour in range(HOURS + 1):
        lines.append(f"{hour // 24} {hour % 24:02d}:00:00 {series[hour % HOURS]:.2f}")
    path.write_bytes(("\n".join(lines) + "\n").encode("ascii"))


def main():
    default = pathlib.Path(__file__).resolve().parent.parent / "database" / "DB_climate_data"
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--directory", type=pathlib.Path, default=default, help="where the files go")
    directory = parser.parse_args().directory
    directory.mkdir(parents=True, exist_ok=True)

    outdoor = outdoor_temperature()
    write_ccd(
        directory / "germany_temperature.ccd",
        (
            "Synthetic outdoor air temperature of a year in Germany, hourly, written by",
            "tools/generate_climate.py. Monthly means: DWD, area mean of Germany, 1991-2020.",
        ),
        outdoor,
    )
    write_ccd(
        directory / "germany_indoor_temperature.ccd",
        (
            "Indoor air temperature that goes with germany_temperature.ccd, after EN 15026, annex C;",
            "hourly, written by tools/generate_climate.py.",
        ),
        indoor_temperature(outdoor),
    )


if __name__ == "__main__":
    main()
