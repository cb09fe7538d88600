#!/usr/bin/env bash
# Starts the real QGIS on a virtual display with the plugin switched on in a
# scratch profile and the sample project, and checks what smoke_check.py
# finds there. Fails if QGIS does not start, the plugin does not load, or the
# settings do not survive saving and reopening the project.
# usage: smoke_test.sh PLUGIN_DIR MAKE_SAMPLE_DATA SOURCE_DIR
set -euo pipefail
plugin_dir=$1 make_sample_data=$2 source_dir=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
source "$source_dir/scripts/qgis_profile.sh"

"$make_sample_data" "$work/data" >/dev/null
/usr/bin/python3 "$source_dir/scripts/desktop_project.py" "$work/data/forest.gpkg" "$work/forest.qgz" >/dev/null 2>&1
write_plugin_profile "$work/profiles" "$plugin_dir"
export TARNWICK_SMOKE_DIR=$work TARNWICK_SMOKE_RESULT=$work/result.json XDG_RUNTIME_DIR=$work/runtime
mkdir -m 700 "$work/runtime"
# The time limit sits inside xvfb-run, so that a hung QGIS ends with its display.
# shellcheck disable=SC2046
xvfb-run -a -s "-screen 0 1280x1024x24" \
  timeout 180 qgis $(qgis_profile_args "$work/profiles") --code "$source_dir/tests/qgis/smoke/smoke_check.py" \
  "$work/forest.qgz" >"$work/qgis.log" 2>&1 || true
if [ ! -s "$work/result.json" ]; then
  echo "QGIS ended without a result; its output:" && cat "$work/qgis.log"
  exit 1
fi
cat "$work/result.json"
/usr/bin/python3 - "$work/result.json" <<'PY'
import json, sys
result = json.load(open(sys.argv[1]))
expected = ["&TNWK Waypoint Converter", "TNWK &Plot Layout Tool", "TNWK &Import Stand IDs", "|", "Select Anchor Point"]
errors = list(result["errors"])
if result.get("toolbar") != expected:
    errors.append(f"toolbar items {result.get('toolbar')}")
if result.get("enabled") != [True, True, True, False]:
    errors.append(f"enabled states {result.get('enabled')}")
if result.get("layers") != ["Plots", "Stands"]:
    errors.append(f"layers {result.get('layers')}")
print("\n".join(errors) or "QGIS started with the Tarnwick Tools toolbar; the settings survived the project")
sys.exit(1 if errors else 0)
PY
