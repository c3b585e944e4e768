"""Grids, profiles and tables of the benchmarks that verify.py runs: pieces without side effects."""

import re


def regrid(text, factor):
    """Project text with its columns halved (factor 2) or merged in pairs (0.5), and all ranges to match."""
    if factor == 1:
        return text

    def widths(match):
        steps = [float(word) for word in match[1].split()]
        if factor == 2:
            steps = [half for width in steps for half in (width / 2, width / 2)]
        else:
            if len(steps) % 2:
                raise ValueError("an odd number of columns cannot be merged in pairs")
            steps = [a + b for a, b in zip(steps[::2], steps[1::2])]
        return "X_STEPS = " + " ".join(f"{width:.9g}" for width in steps) + " mm"

    def columns(match):
        left, right = int(match[1]), int(match[3])
        left, right = (2 * left, 2 * right + 1) if factor == 2 else (left // 2, right // 2)
        return f"RANGE = {left} {match[2]} {right} {match[4]}"

    text = re.sub(r"^X_STEPS = (.*) mm$", widths, text, flags=re.MULTILINE)
    return re.sub(r"^RANGE = (\d+) (\d+) (\d+) (\d+)$", columns, text, flags=re.MULTILINE)


def centres(widths):
    """Centres of cells from their widths."""
    result, x = [], 0.0
    for width in widths:
        result.append(x + width / 2)
        x += width
    return result


def interpolate(x, xs, values):
    """Straight between the centres `xs`, and on beyond the outermost two."""
    i = next((i for i in range(1, len(xs) - 1) if xs[i] >= x), len(xs) - 1)
    share = (x - xs[i - 1]) / (xs[i] - xs[i - 1])
    return values[i - 1] + share * (values[i] - values[i - 1])


def signed(value, digits):
    """With a sign, but for what rounds to zero."""
    text = f"{value:+.{digits}f}"
    return text if float(text) != 0 else text[1:]


def markdown_table(head, rows, alignment="---:"):
    lines = ["| " + " | ".join(head) + " |", "|" + f"{alignment}|" * len(head)]
    return "\n".join(lines + ["| " + " | ".join(row) + " |" for row in rows])


def replace_block(document, name, content):
    """Document with the lines between the two markers of a name replaced."""
    begin, end = f"<!-- begin {name} -->", f"<!-- end {name} -->"
    if document.count(begin) != 1 or document.count(end) != 1:
        raise ValueError(f"the document needs the markers of '{name}' once each")
    before, rest = document.split(begin)
    return before + begin + "\n\n" + content + "\n\n" + end + rest.split(end)[1]
