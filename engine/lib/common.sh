# Messages, times, and the folders of the results. Sourced by engine/build.
# shellcheck shell=bash

phase_names=()
phase_seconds=()
phase_started=$SECONDS

say() {
  printf '%s\n' "$*"
}

fail() {
  printf '%s\n' "$@" >&2
  exit 1
}

# phase_done NAME: books the time since the last call under NAME.
phase_done() {
  phase_names+=("$1")
  phase_seconds+=($((SECONDS - phase_started)))
  phase_started=$SECONDS
}

print_times() {
  local i
  say "Times:"
  for i in "${!phase_names[@]}"; do
    printf '  %-28s %4d s\n' "${phase_names[i]}" "${phase_seconds[i]}"
  done
  printf '  %-28s %4d s\n' "in all" "$SECONDS"
}

compiler_of() {
  case $1 in
    windows) echo x86_64-w64-mingw32-g++-posix ;;
    native*) echo g++ ;;
  esac
}

# Where it is noted which version stands in for a pinned one that Debian has replaced.
replacement_file() {
  local version=${PINNED_VERSIONS[$1]}
  echo "$downloads_dir/$1-${version/:/_}.replaced"
}

# The version of a source package that is used.
version_of() {
  cat "$(replacement_file "$1")" 2>/dev/null || echo "${PINNED_VERSIONS[$1]}"
}

# The folder with a source package of that version.
source_dir() {
  local version
  version=$(version_of "$1")
  echo "$downloads_dir/$1-${version/:/_}"
}

# What PDFium's source tree is known by: the package's version, or for a tree of the
# user's own its place and, where git knows it, its commit.
source_identity() {
  if [ -z "${QUILLMERE_PDFIUM_SOURCE:-}" ]; then
    echo "chromium $(version_of chromium)"
    return
  fi
  realpath "$QUILLMERE_PDFIUM_SOURCE"
  git -C "$QUILLMERE_PDFIUM_SOURCE" rev-parse HEAD 2>/dev/null || true
}

# The source packages of a target: the native engines use the installed libraries.
source_packages() {
  [ -n "${QUILLMERE_PDFIUM_SOURCE:-}" ] || echo chromium
  [ "$1" != windows ] || printf '%s\n' "${LIBRARY_SOURCE_PACKAGES[@]}"
}

# Everything that decides the result goes into the key, so that a changed recipe
# or compiler gets a folder of its own.
recipe_key() {
  (
    cd "$engine_dir"
    cat CMakeLists.txt cmake/* lib/compile.sh lib/licenses.sh exports.map ./*.c ./*.cpp ./*.h ./*.in
    source_identity
    for package in $(source_packages "$1"); do
      echo "$package $(version_of "$package")"
    done
    "$(compiler_of "$1")" -dumpfullversion 2>/dev/null || true
    "$(compiler_of "$1")" -dumpmachine 2>/dev/null || true
  ) | sha256sum | cut -c 1-16
}

prefix_dir() {
  echo "$cache_dir/engine/$(recipe_key "$1")/$1"
}

# A result is put in place by one rename after its last file, the marker.
is_complete() {
  [ -f "$(prefix_dir "$1")/complete" ]
}

require_packages() {
  local packages=(cmake ninja-build python3 dpkg-dev xz-utils) target
  for target in "$@"; do
    case $target in
      windows) packages+=(g++-mingw-w64-x86-64-posix libz-mingw-w64-dev nasm) ;;
      native*)
        packages+=(g++ pkg-config libfreetype-dev libharfbuzz-dev libjpeg62-turbo-dev
          libopenjp2-7-dev zlib1g-dev)
        ;;
    esac
  done
  "$engine_dir/../scripts/require-packages" "${packages[@]}"
}
