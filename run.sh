#!/usr/bin/env bash
# Builds the solver and runs a project with it, then draws its results.
#
#   ./run.sh [project.vel] [solver options]
#
# Without a project: the main example. Options such as -v2, --restart or --testinit go to the solver.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
project=
options=()
for argument in "$@"; do
  case $argument in
    -*) options+=("$argument") ;;
    *)
      [ -z "$project" ] || { echo "run.sh: one project at a time, got '$project' and '$argument'" >&2; exit 1; }
      project=$argument
      ;;
  esac
done
[ -n "$project" ] || project=$root/examples/outer_wall/outer_wall.vel
[ -f "$project" ] || { echo "run.sh: no such project file: $project" >&2; exit 1; }

"$root/tools/install_packages.sh" g++ cmake ninja-build libsundials-dev libsuitesparse-dev python3 python3-matplotlib

[ -f "$root/build/release/build.ninja" ] || (cd "$root" && cmake --preset release >/dev/null)
ninja -C "$root/build/release" --quiet solver

"$root/build/release/bin/solver" --closeonexit ${options[@]+"${options[@]}"} "$project"

for option in ${options[@]+"${options[@]}"}; do
  case $option in -t* | --testinit) exit 0 ;; esac  # no results to draw
done
echo
echo "Pictures:"
/usr/bin/python3 "$root/tools/plot_output.py" "$("$root/tools/results_dir.sh" "$project")"
