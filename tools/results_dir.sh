#!/usr/bin/env bash
# Prints the results directory of a project file: its OUTPUT_FOLDER, or "<name>.results" beside it.
set -euo pipefail

project=$1
directory=$(cd "$(dirname "$project")" && pwd)
name=$(basename "$project")
folder=$(sed -n 's/^[[:blank:]]*OUTPUT_FOLDER[[:blank:]]*=[[:blank:]]*\(.*[^[:space:]]\)[[:space:]]*$/\1/p' "$project" | tail -n 1)
folder=${folder//'$(PROJECT_DIR)'/$directory}
folder=${folder//'${PROJECT_DIR}'/$directory}
case $folder in
  '') echo "$directory/${name%.*}.results" ;;
  /*) echo "$folder" ;;
  *) echo "$directory/$folder" ;;
esac
