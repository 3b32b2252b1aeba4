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
  wait "$pid" || { tail -n 5 "$log" >&2; return 1; }
}

available_chromium() {
  apt_private apt-cache showsrc --only-source chromium 2>/dev/null |
    sed -n 's/^Version: //p' | sort -Vu | tr '\n' ' '
}

check_chromium_available() {
  local available
  available=$(available_chromium)
  case " $available" in *" $CHROMIUM_PACKAGE_VERSION "*) return 0 ;; esac
  fail "Debian's mirror has no source package chromium $CHROMIUM_PACKAGE_VERSION." \
    "Versions it has: ${available:-none}. The version is set in engine/versions.sh." "$(source_hint)"
}

fetch_chromium() {
  local final=$downloads_dir/chromium-$CHROMIUM_PACKAGE_VERSION partial
  [ ! -d "$final" ] || return 0
  update_lists
  check_chromium_available
  partial=$downloads_dir/chromium.partial
  mkdir -p "$partial" && cd "$partial"
  say "Downloading chromium's source package $CHROMIUM_PACKAGE_VERSION (941 MB)"
  download_with_size '*.tar.xz*' apt_private apt-get -q source --download-only --tar-only \
    "chromium=$CHROMIUM_PACKAGE_VERSION" ||
    fail "The download failed; run this again to resume it." "$(source_hint)"
  phase_done "download of PDFium"
  say "Unpacking PDFium"
  rm -rf tree && mkdir tree
  xz -T0 -dc chromium_*.orig.tar.xz |
    tar x -C tree --strip-components=1 "${chromium_parts[@]/#/chromium-${CHROMIUM_PACKAGE_VERSION%-*}/}" ||
    fail "chromium's archive could not be unpacked; remove $partial and run this again."
  [ -f tree/third_party/pdfium/public/fpdfview.h ] || fail "chromium's archive holds no PDFium."
  mv tree "$final"
  cd / && rm -rf "$partial"
  phase_done "unpacking PDFium"
}

# fetch_library PACKAGE: its sources with Debian's patches applied.
fetch_library() {
  local package=$1 final=$downloads_dir/$1 partial=$downloads_dir/$1.partial
  [ ! -d "$final" ] || return 0
  update_lists
  say "Downloading $package"
  rm -rf "$partial" && mkdir -p "$partial" && cd "$partial"
  apt_private apt-get -q source "$package" >download.log 2>&1 || {
    tail -n 5 download.log >&2
    fail "The source package $package could not be fetched; run this again with a network."
  }
  mv "$package"-*/ source
  rm -rf ./*.tar.* ./*.asc source/test source/tests source/perf source/ft2d*
  cd / && mv "$partial" "$final"
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

# find_sources TARGET...: sets pdfium_dir and deps_dir; the Windows DLL holds its
# libraries, the native one uses the installed ones.
find_sources() {
  local package
  mkdir -p "$downloads_dir"
  if [ -n "${QUILLMERE_PDFIUM_SOURCE:-}" ]; then
    use_given_source
  else
    fetch_chromium
    deps_dir=$downloads_dir/chromium-$CHROMIUM_PACKAGE_VERSION
    pdfium_dir=$deps_dir/third_party/pdfium
  fi
  [[ " $* " == *" windows "* ]] || return 0
  for package in "${LIBRARY_SOURCE_PACKAGES[@]}"; do
    fetch_library "$package"
  done
  phase_done "sources of the libraries"
}
