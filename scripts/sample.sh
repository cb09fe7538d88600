#!/usr/bin/env bash
# Installs what is missing, builds, writes the sample forest and lays out
# plots in every sample stand. Output goes to out/.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/build.sh tarnwick make_sample_data
build/examples/make_sample_data examples/data
mkdir -p out
build/apps/cli/tarnwick plot-layout \
  --stands 'examples/data/forest.gpkg|layername=Stands' --stand-id StandID \
  --units feet --plots-field PlotCount --ratio 1:1 --orientation-field Orient \
  --buffer 33 --buffer-units feet \
  --out out/sample_plots.gpkg/Plots --report out/sample_plots_report.rtf --overwrite
