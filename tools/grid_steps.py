#!/usr/bin/python3
"""Print the cell widths of layers, refined towards their surfaces and interfaces.

A film or a surface temperature acts on the centre of the outermost cell, and the conductivity between two
materials is the arithmetic mean of the two cells. So the cells at surfaces and interfaces should be thin;
the cells in the middle of a layer may be wide.

usage: grid_steps.py [--first MM] [--growth FACTOR] THICKNESS...      all lengths in mm

Prints the line for X_STEPS (or Y_STEPS) and, for each layer, its first and last cell.
"""
import argparse
import sys


def layer(thickness, first, growth):
    """Widths of one layer: from `first` growing by `growth` to the middle and back, scaled to fit."""
    half = []
    while sum(half) < thickness / 2:
        half.append(first * growth ** len(half))
    factor = thickness / (2 * sum(half))
    half = [width * factor for width in half]
    return half + half[::-1]


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('--first', type=float, default=0.2, help='width of the outermost cells (default 0.2)')
    parser.add_argument('--growth', type=float, default=1.4, help='ratio of neighbours (default 1.4)')
    parser.add_argument('thickness', type=float, nargs='+')
    args = parser.parse_args()
    if args.first <= 0 or args.growth < 1 or min(args.thickness) <= 0:
        sys.exit('grid_steps.py: widths must be positive and the growth at least 1')
    widths, number = [], 0
    for thickness in args.thickness:
        cells = layer(thickness, args.first, args.growth)
        print(f'layer of {thickness:g} mm: cells {number} to {number + len(cells) - 1}', file=sys.stderr)
        number += len(cells)
        widths += cells
    print(' '.join(f'{width:.7g}' for width in widths), 'mm')


if __name__ == '__main__':
    main()
