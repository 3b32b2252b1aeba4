# shellcheck shell=bash
# Shared by the commands and by the scripts here. Sourced, after set -euo pipefail.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cache=${QUILLMERE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/quillmere}
jobs=${QUILLMERE_JOBS:-$(nproc)}

build_packages=(cmake ninja-build g++ g++-mingw-w64-x86-64-posix libboost1.81-dev googletest python3)
reader_packages=(poppler-utils mupdf-tools qpdf)
test_packages=(clang-format-14 "${reader_packages[@]}")
desktop_packages=(wine wine64 fonts-wine fonts-liberation xvfb)

# Keeps Wine quiet, without boxes that offer to install more of it, and allows any character in
# paths.
wine_environment=(LC_ALL=C.UTF-8 WINEDEBUG=-all "WINEDLLOVERRIDES=mscoree,mshtml=;winemenubuilder.exe=d")

note() { echo "== $*"; }

die() {
  echo "$*" >&2
  exit 1
}

require() { "$root/scripts/require-packages" "$@"; }

# build_engine TARGET...: the engine for these targets ("windows", "native", "native-asan"); does
# nothing when it is cached.
build_engine() {
  local target
  for target in "$@"; do
    "$root/engine/build" "$target"
  done
}

# configure PRESET [OPTION...]: quiet unless it fails.
configure() {
  local preset=$1 log
  log=$(mktemp)
  if ! (cd "$root" && cmake --preset "$@") >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    die "Could not configure the preset $preset."
  fi
  rm -f "$log"
}

# build PRESET [TARGET...]
build() {
  local preset=$1 targets=()
  shift
  [ $# -eq 0 ] || targets=(--target "$@")
  cmake --build "$root/build/$preset" -j "$jobs" "${targets[@]}"
}

# windows_path PATH: an absolute path as Windows programs under Wine see it.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }
