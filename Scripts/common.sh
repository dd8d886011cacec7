# shellcheck shell=bash
# Sourced by the other scripts: the project's root, and building a preset.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export root
cd "$root" || exit 1

build_preset() { # build_preset PRESET [CMAKE OPTION...] — configures and builds, quietly when all is well
  local preset=$1
  shift
  "$root/Scripts/bootstrap"
  local log
  log=$(mktemp)
  if ! cmake --preset "$preset" "$@" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    return 1
  fi
  rm -f "$log"
  cmake --build --preset "$preset" -j "$(nproc)" >&2
}
