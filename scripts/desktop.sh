#!/usr/bin/env bash
# The desktop: installs what is missing, builds the QGIS plugin and the
# manual, lays out plots in the sample forest, writes a QGIS project over it
# (out/desktop/forest.qgz) and starts QGIS with the plugin switched on in a
# profile of its own under out/qgis-profiles. Your own QGIS profile is left
# alone.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/sample.sh
bash scripts/build.sh tarnwickplugin manual_pdf
source scripts/qgis_profile.sh
/usr/bin/python3 scripts/desktop_project.py examples/data/forest.gpkg out/desktop/forest.qgz
write_plugin_profile "$PWD/out/qgis-profiles" "$PWD/build/apps/qgis"
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then
  echo "No display to show QGIS on. With one, start it so:"
  echo "  qgis $(qgis_profile_args "$PWD/out/qgis-profiles") out/desktop/forest.qgz"
  exit 0
fi
# shellcheck disable=SC2046
exec qgis $(qgis_profile_args "$PWD/out/qgis-profiles") out/desktop/forest.qgz
