# Gets the sources through apt, in an apt configuration of our own so that the
# machine's lists stay as they are. Sourced by engine/build.
# shellcheck shell=bash disable=SC2154

# What is unpacked of chromium's 941 MB; the archive itself is not kept.
chromium_parts=(LICENSE chrome/VERSION build/build_config.h build/buildflag.h
  third_party/pdfium third_party/abseil-cpp third_party/fast_float
  third_party/icu/LICENSE third_party/icu/source/common)

apt_private() {
  local tool=$1 dir=$downloads_dir/apt
  shift
  "$tool" -o Dir::Etc::SourceList="$dir/debian.sources" -o Dir::Etc::SourceParts=/dev/null \
    -o Dir::State::Lists="$dir/lists" -o Dir::Cache="$dir/cache" \
    -o APT::Sandbox::User="$(id -un)" -o Acquire::Languages=none -o Acquire::Retries=3 "$@"
}

update_lists() {
  local dir=$downloads_dir/apt
  [ -z "${lists_are_fresh:-}" ] || return 0
  say "Reading Debian's source lists"
  mkdir -p "$dir/lists/partial" "$dir/cache/archives/partial"
  "$engine_dir/source_list.py" >"$dir/debian.sources" || fail "$(source_hint)"
  if ! apt_private apt-get -qq -o APT::Update::Error-Mode=any update >"$dir/log" 2>&1; then
    tail -n 5 "$dir/log" >&2
    fail "Debian's source lists could not be read; is there a network?" "$(source_hint)"
  fi
  lists_are_fresh=yes
}

source_hint() {
  echo "Next step: put QUILLMERE_PDFIUM_SOURCE=DIR before the command, with DIR a PDFium checkout"
  echo "(or an unpacked chromium source tree); engine/README.md says what it must hold."
}

# download_with_size FILE_PATTERN COMMAND...: runs the command quietly and says
# every 20 seconds how much has come.
download_with_size() {
  local pattern=$1 log=download.log pid
  shift
  "$@" >"$log" 2>&1 &
  pid=$!
  while kill -0 "$pid" 2>/dev/null; do
    sleep 1
    if [ $((SECONDS % 20)) -eq 0 ]; then
      say "  $(find . -name "$pattern" -printf '%s\n' | awk '{n += $1} END {print int(n / 1000000)}') MB"
    fi
  done
  wait "$pid"
}

# The versions of a source package that the mirror has, oldest first.
available_versions() {
  apt_private apt-cache showsrc --only-source "$1" 2>/dev/null | sed -n 's/^Version: //p' | sort -Vu
}

# choose_version PACKAGE GONE: the pinned version where the mirror has it, otherwise the newest.
# GONE lists versions, one a line, that the mirror names but does not have.
choose_version() {
  local package=$1 gone=$2 pinned=${PINNED_VERSIONS[$1]} available newest
  update_lists
  rm -f "$(replacement_file "$package")"
  available=$(available_versions "$package" | grep -vxF "$gone" || true)
  ! grep -qxF "$pinned" <<<"$available" || return 0
  newest=$(tail -n 1 <<<"$available")
  [ -n "$newest" ] || fail "Debian's mirror has no source package $package." "$(source_hint)"
  say "Debian has replaced $package $pinned, which engine/versions.sh names; taking $newest"
  echo "$newest" >"$(replacement_file "$package")"
}

# download_failed MESSAGE...: returns where the mirror does not have what its lists name, and ends
# everything otherwise.
download_failed() {
  ! grep -qE ' 404 +Not Found' download.log || return 0
  tail -n 5 download.log >&2
  fail "$@"
}

# Whether a source package of the target is not the pinned one.
uses_replacements() {
  local package
  for package in $(source_packages "$1"); do
    [ "$(version_of "$package")" = "${PINNED_VERSIONS[$package]}" ] || return 0
  done
  return 1
}

fetch_chromium() {
  local final version partial=$downloads_dir/chromium.partial
  version=$(version_of chromium)
  final=$(source_dir chromium)
  mkdir -p "$partial" && cd "$partial"
  say "Downloading chromium's source package $version (941 MB)"
  download_with_size '*.tar.xz*' apt_private apt-get -q source --download-only --tar-only \
    "chromium=$version" || {
    download_failed "The download failed; run this again to resume it." "$(source_hint)"
    return 1
  }
  phase_done "download of PDFium"
  say "Unpacking PDFium"
  rm -rf tree && mkdir tree
  xz -T0 -dc chromium_*.orig.tar.xz |
    tar x -C tree --strip-components=1 "${chromium_parts[@]/#/chromium-${version%-*}/}" ||
    fail "chromium's archive could not be unpacked; remove $partial and run this again."
  [ -f tree/third_party/pdfium/public/fpdfview.h ] || fail "chromium's archive holds no PDFium."
  mv tree "$final"
  cd / && rm -rf "$partial"
  phase_done "unpacking PDFium"
}

# fetch_library PACKAGE: its sources with Debian's patches applied.
fetch_library() {
  local package=$1 version final partial=$downloads_dir/$1.partial
  version=$(version_of "$package")
  final=$(source_dir "$package")
  say "Downloading $package $version"
  rm -rf "$partial" && mkdir -p "$partial" && cd "$partial"
  apt_private apt-get -q source "$package=$version" >download.log 2>&1 || {
    download_failed "The source package $package could not be fetched; run this again with a network."
    return 1
  }
  mv "$package"-*/ source || fail "The source package $package could not be unpacked."
  rm -rf ./*.tar.* ./*.asc source/test source/tests source/perf source/ft2d*
  cd / && mv "$partial" "$final"
}

# download PACKAGE: into its source_dir. Fails where the mirror does not have the version.
download() {
  if [ "$1" = chromium ]; then fetch_chromium; else fetch_library "$1"; fi
}

# fetch_source PACKAGE: makes sure that its source_dir is there.
fetch_source() {
  local gone=none
  [ ! -d "$(source_dir "$1")" ] || return 0
  choose_version "$1" "$gone"
  until [ -d "$(source_dir "$1")" ] || download "$1"; do
    say "The mirror names $1 $(version_of "$1") but does not have it"
    gone+=$'\n'$(version_of "$1")
    choose_version "$1" "$gone"
  done
}

# Sets pdfium_dir and deps_dir for a tree of the user's own.
use_given_source() {
  local given
  given=$(realpath "$QUILLMERE_PDFIUM_SOURCE")
  if [ -f "$given/third_party/pdfium/public/fpdfview.h" ]; then
    pdfium_dir=$given/third_party/pdfium deps_dir=$given
  else
    pdfium_dir=$given deps_dir=$given
    [ -d "$given/third_party/abseil-cpp/absl" ] || deps_dir=$(dirname "$(dirname "$given")")
  fi
  local needed
  for needed in "$pdfium_dir/public/fpdfview.h" "$deps_dir/build/build_config.h" \
    "$deps_dir/third_party/abseil-cpp/absl/container/flat_hash_set.h" \
    "$deps_dir/third_party/fast_float/src/include/fast_float/fast_float.h" \
    "$deps_dir/third_party/icu/source/common/uchar.cpp"; do
    [ -f "$needed" ] || fail "QUILLMERE_PDFIUM_SOURCE lacks $needed; engine/README.md says what it must hold."
  done
}

# find_sources TARGET...: fetches what is missing and sets pdfium_dir and deps_dir.
find_sources() {
  local target package
  mkdir -p "$downloads_dir"
  for target in "$@"; do
    for package in $(source_packages "$target"); do
      fetch_source "$package"
    done
  done
  if [ -n "${QUILLMERE_PDFIUM_SOURCE:-}" ]; then
    use_given_source
  else
    deps_dir=$(source_dir chromium)
    pdfium_dir=$deps_dir/third_party/pdfium
  fi
  phase_done "sources"
}
