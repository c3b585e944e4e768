"""Random numbers and courses over a year of 365 days, hour by hour; the year closes.

The random numbers come from a generator of this file, so that every version of Python makes the same series.
"""

import math

MONTH_DAYS = (31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31)
DAYS = sum(MONTH_DAYS)
HOURS = 24 * DAYS


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
