#!/usr/bin/env bash
# Screenshots for the README in out/screenshots/: QGIS with the Tarnwick Tools
# toolbar over the sample project (on a virtual display), the toolbar alone,
# the report window of the sample plot layout run, the Plot Layout dialog in
# its count, spacing, failed-check, existing-layer and anchor states, and the
# Import Stand IDs, Waypoint Converter and transformation chooser dialogs.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/sample.sh
bash scripts/build.sh tarnwickplugin report_screenshot plot_layout_screenshots tool_dialog_screenshots
source scripts/qgis_profile.sh
shots=$PWD/out/screenshots
mkdir -p "$shots"
/usr/bin/python3 scripts/desktop_project.py examples/data/forest.gpkg out/desktop/forest.qgz
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
write_plugin_profile "$work/profiles" "$PWD/build/apps/qgis"
# shellcheck disable=SC2046
TARNWICK_SCREENSHOTS=$shots xvfb-run -a -s "-screen 0 1280x800x24" \
  timeout 120 qgis $(qgis_profile_args "$work/profiles") --code scripts/screenshot_qgis.py out/desktop/forest.qgz \
  >"$work/qgis.log" 2>&1 || { cat "$work/qgis.log"; exit 1; }
QT_QPA_PLATFORM=offscreen build/apps/qgis/report_screenshot out/sample_plots_report.rtf "$shots/report_window.png"
QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$work build/apps/qgis/plot_layout_screenshots examples/data/forest.gpkg "$shots" \
  >"$work/dialog.log" 2>&1 || { cat "$work/dialog.log"; exit 1; }
QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$work build/apps/qgis/tool_dialog_screenshots examples/data/forest.gpkg "$shots" \
  >"$work/tool_dialogs.log" 2>&1 || { cat "$work/tool_dialogs.log"; exit 1; }
ls -1 "$shots"
