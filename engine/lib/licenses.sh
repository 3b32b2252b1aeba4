# Gathers the licences of what goes into the engine. Sourced by engine/build.
# shellcheck shell=bash disable=SC2154

# first_of TARGET_FILE CANDIDATE...: copies the first candidate that exists.
first_of() {
  local to=$1 candidate
  shift
  for candidate in "$@"; do
    if [ -f "$candidate" ]; then
      cp "$candidate" "$to"
      return
    fi
  done
  fail "No licence text for $(basename "$to" .txt) among: $*"
}

copy_licenses() {
  local target=$1 to=$2 package
  first_of "$to/pdfium.txt" "$pdfium_dir/LICENSE"
  first_of "$to/agg.txt" "$pdfium_dir/third_party/agg23/copying"
  first_of "$to/lcms.txt" "$pdfium_dir/third_party/lcms/LICENSE"
  first_of "$to/abseil.txt" "$deps_dir/third_party/abseil-cpp/LICENSE"
  first_of "$to/fast_float.txt" "$deps_dir/third_party/fast_float/src/LICENSE-MIT"
  first_of "$to/icu.txt" "$deps_dir/third_party/icu/LICENSE" "$deps_dir/third_party/icu/source/common/LICENSE"
  [ "$target" = windows ] || return 0
  first_of "$to/freetype.txt" "$(source_dir freetype)/source/docs/FTL.TXT" "$pdfium_dir/third_party/freetype/FTL.TXT"
  first_of "$to/harfbuzz.txt" "$(source_dir harfbuzz)/source/COPYING"
  first_of "$to/libjpeg-turbo.txt" "$(source_dir libjpeg-turbo)/source/LICENSE.md"
  first_of "$to/libjpeg.txt" "$(source_dir libjpeg-turbo)/source/README.ijg"
  first_of "$to/mimalloc.txt" "$(source_dir mimalloc)/source/LICENSE"
  first_of "$to/openjpeg.txt" "$(source_dir openjpeg2)/source/LICENSE"
  for package in libz-mingw-w64-dev mingw-w64-x86-64-dev g++-mingw-w64-x86-64-posix; do
    first_of "$to/${package//+/p}.txt" "/usr/share/doc/$package/copyright"
  done
}
