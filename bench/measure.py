"""What a run of the solver costs, and how far the outputs of two runs are apart."""

import subprocess
import sys
from dataclasses import dataclass
from pathlib import Path

# A process of its own, so that the use of resources is that of this one run; Python itself takes 10 MB.
LAUNCHER = ("import resource,subprocess,sys;"
            "r=subprocess.run(sys.argv[1:],stdin=subprocess.DEVNULL,stdout=subprocess.DEVNULL);"
            "u=resource.getrusage(resource.RUSAGE_CHILDREN);"
            "print(r.returncode,u.ru_utime+u.ru_stime,u.ru_maxrss/1024)")


@dataclass
class Cost:
    """Processor time of user and system [s], peak memory [MB] and counts of a run."""

    seconds: float
    memory: float
    steps: int
    evaluations: int


def run(solver, project):
    """Runs a project whose settings have USE_MONITORS_FILE = YES."""
    out = subprocess.run([sys.executable, "-c", LAUNCHER, str(solver), "-x", "-v0", str(project)], capture_output=True,
                         text=True, check=True)
    returncode, seconds, memory = out.stdout.split()
    if returncode != "0":
        raise RuntimeError(f"{project}: exit code {returncode}\n{out.stderr}")
    last = numbers(Path(f"{project}.cvode_monitors"))[-1]
    return Cost(float(seconds), float(memory), int(last[0]), int(last[2]))


def numbers(path):
    """The records of a text file: the lines of numbers behind its last empty line."""
    records = []
    for line in path.read_text().splitlines():
        if not line.strip():
            records = []
        try:
            records.append([float(word) for word in line.split()])
        except ValueError:
            pass
    return [record for record in records if record]


def largest_difference(one, other):
    """Largest difference and largest size of all numbers but the times of two output files."""
    rows, others = numbers(one), numbers(other)
    if [row[:1] for row in rows] != [row[:1] for row in others] or list(map(len, rows)) != list(map(len, others)):
        raise RuntimeError(f"{one} and {other} have other times or numbers of values")
    difference = size = 0.0
    for row, other_row in zip(rows, others):
        for x, y in zip(row[1:], other_row[1:]):
            difference = max(difference, abs(x - y))
            size = max(size, abs(x))
    return difference, size
