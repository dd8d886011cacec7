# shellcheck shell=bash disable=SC2154
# Sourced by format and lint: our own C++ files, as a null-separated list.
our_sources() { # our_sources SUFFIX...
  local suffix
  for suffix in "$@"; do
    git -C "$root" ls-files -z --cached --others --exclude-standard -- "*.$suffix"
  done
}
