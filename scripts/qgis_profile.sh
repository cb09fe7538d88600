# Sourced by the desktop scripts. write_plugin_profile PROFILES_DIR PLUGIN_DIR
# writes a QGIS profile "tarnwick" under PROFILES_DIR with the plugin in
# PLUGIN_DIR switched on. QGIS loads C++ plugins from the profile's settings
# (QGIS_PLUGINPATH does not reach them); the user's own profile is never
# touched, as QGIS is started with --profiles-path PROFILES_DIR.
write_plugin_profile() {
  local ini="$1/profiles/tarnwick/QGIS/QGIS3.ini"
  mkdir -p "$(dirname "$ini")"
  cat > "$ini" <<INI
[Plugins]
libtarnwickplugin=true

[plugins]
searchPathsForPlugins=$2

[qgis]
checkVersion=false
showTips322=false
INI
}

# The arguments that start QGIS in that profile.
qgis_profile_args() {
  echo --profiles-path "$1" --profile tarnwick --nologo --noversioncheck
}
