"""Tables of functions for material files: places their points and writes them."""


SAMPLES = 16  # in an interval, to find its largest error


def meets(function, x0, x1, tolerance):
    """Whether a straight line between x0 and x1 stays within the tolerance."""
    y0, y1 = function(x0), function(x1)
    for i in range(1, SAMPLES):
        part = i / SAMPLES
        x = x0 + part * (x1 - x0)
        if abs(y0 + part * (y1 - y0) - function(x)) > tolerance(x):
            return False
    return True


def place_points(function, begin, end, tolerance):
    """Abscissae between which linear interpolation meets the tolerance, each interval nearly as long as
    possible."""
    points, step = [begin], end - begin
    shortest = 1e-9 * (end - begin)
    while points[-1] < end:
        here = points[-1]
        step = min(1.5 * step, end - here)
        while step > shortest and not meets(function, here, here + step, tolerance):
            step *= 0.93
        points.append(end if here + 1.02 * step >= end else here + step)
    return points


def checked(name, function, points, tolerance):
    """Refuses a table that misses its tolerance on points that were not used to make it."""
    worst = max(
        abs(y0 + part * (y1 - y0) - function(x0 + part * (x1 - x0))) / tolerance(x0 + part * (x1 - x0))
        for (x0, y0), (x1, y1) in zip(points, points[1:])
        for part in (0.21, 0.37, 0.52, 0.68, 0.83)
    )
    if worst > 1.1:
        raise SystemExit(f"{name}: the interpolation error is {worst:.2f} of the tolerance")
    return worst


NEAR_SATURATION = 2.2  # log10 of a suction of 160 Pa, beyond the polynomial of the program
DEFICIT_TOLERANCE = 0.02  # of the free space, keeps the slopes of neighbouring intervals near each other
LARGEST_EXPONENT = 7.0  # a steeper start would leave the polynomial of the program with a turning point


def wet_points(theta, theta_eff):
    """Points of a retention curve from 1 Pa to 160 Pa: the free space as a power of log10 of the suction that
    meets the curve at 160 Pa, with its slope as far as possible."""
    end = NEAR_SATURATION
    free = theta_eff - theta(end)
    slope = (theta(end) - theta(end + 1e-3)) / 1e-3
    exponent = min(end * slope / free, LARGEST_EXPONENT)
    xs = (0.8, 1.1, 1.4, 1.6, 1.8, 1.9, 2.0, 2.1)
    return [(0.0, theta_eff)] + [(x, theta_eff - free * (x / end) ** exponent) for x in xs]


def retention_points(name, theta, theta_eff, end, tolerance):
    """Points (log10 of the suction, Theta) from 1 Pa to `end`, and the largest error over the tolerance."""
    tight = lambda x: min(tolerance(x), DEFICIT_TOLERANCE * min(theta_eff - theta(x), theta(x)))
    points = [(x, theta(x)) for x in place_points(theta, NEAR_SATURATION, end, tight)]
    return wet_points(theta, theta_eff) + points, checked(name, theta, points, tight)


def rising(points):
    """The rising table that deviates least: the mean of the largest value so far and the smallest to come."""
    values = [y for _, y in points]
    largest = [max(values[: i + 1]) for i in range(len(values))]
    smallest = [min(values[i:]) for i in range(len(values))]
    return [(x, 0.5 * (a + b)) for (x, _), a, b in zip(points, largest, smallest)]


def number(value):
    """Shortest text that reads back as the same number."""
    text = repr(float(value))
    return text[:-2] if text.endswith(".0") else text


def function_block(name, points):
    xs = " ".join(number(x) for x, _ in points)
    ys = " ".join(number(y) for _, y in points)
    return f"FUNCTION = {name}\n  {xs}\n  {ys}\n"
