# Compiles one target and puts the result in place. Sourced by engine/build.
# shellcheck shell=bash disable=SC2154

# PDFium's version as four numbers: chromium's, or from a checkout's branch tag.
engine_version() {
  local file=$deps_dir/chrome/VERSION tag
  if [ -f "$file" ]; then
    sed -n 's/^[A-Z]*=//p' "$file" | paste -sd.
    return
  fi
  tag=$(git -C "$pdfium_dir" describe --tags --match 'chromium/*' --abbrev=0 2>/dev/null || true)
  tag=${tag#chromium/}
  echo "0.0.${tag:-0}.0"
}

configure_target() {
  local target=$1 options=(-G Ninja -S "$engine_dir" -B "$2" -DCMAKE_BUILD_TYPE=Release
    -DPDFIUM_DIR="$pdfium_dir" -DDEPS_DIR="$deps_dir" -DENGINE_VERSION="$(engine_version)")
  if [ "$target" = windows ]; then
    options+=(-DCMAKE_TOOLCHAIN_FILE="$engine_dir/cmake/mingw.cmake"
      -DFREETYPE_DIR="$(source_dir freetype)/source"
      -DHARFBUZZ_DIR="$(source_dir harfbuzz)/source"
      -DJPEG_DIR="$(source_dir libjpeg-turbo)/source"
      -DMIMALLOC_DIR="$(source_dir mimalloc)/source"
      -DOPENJPEG_DIR="$(source_dir openjpeg2)/source")
  fi
  [ "$target" != native-asan ] || options+=(-DENGINE_SANITIZE=ON)
  cmake "${options[@]}" >"$2/configure.log" 2>&1 || {
    tail -n 20 "$2/configure.log" >&2
    fail "The $target engine could not be configured."
  }
}

# Runs ninja and says how far it is at every tenth of the way.
compile_target() {
  local target=$1 dir=$2
  NINJA_STATUS='[%f/%t] ' ninja -C "$dir" -j "$(nproc)" 2>&1 | tee "$dir/compile.log" |
    awk -v name="$target" -F '[][/]' '
      /^\[[0-9]+\/[0-9]+\]/ {
        tenth = int(10 * $2 / $3)
        if (tenth > shown) { shown = tenth; print "  " name ": " $2 " of " $3; fflush() }
      }' || {
    grep -A 15 -m 1 -E '^FAILED|error' "$dir/compile.log" >&2
    fail "The $target engine could not be compiled; the whole log is $dir/compile.log"
  }
}

# install_target TARGET BUILD_DIR STAGE
install_target() {
  local target=$1 dir=$2 stage=$3
  mkdir -p "$stage/include" "$stage/lib" "$stage/licenses"
  cp -r "$pdfium_dir/public/." "$stage/include"
  find "$stage/include" -type f ! -name '*.h' -delete
  # PDFium's C++ headers include each other by their place in its own tree.
  ln -s . "$stage/include/public"
  cp "$engine_dir/quillmere_engine.h" "$stage/include"
  if [ "$target" = windows ]; then
    mkdir "$stage/bin"
    cp "$dir/pdfium.dll" "$stage/bin"
    cp "$dir/libpdfium.dll.a" "$stage/lib"
  else
    cp "$dir/libpdfium.so" "$stage/lib"
  fi
  copy_licenses "$target" "$stage/licenses"
}

build_target() {
  local target=$1 prefix work stage
  prefix=$(prefix_dir "$target")
  work=$cache_dir/engine/work-$(basename "$(dirname "$prefix")")-$target
  stage=$prefix.new
  say "Building the $target engine"
  mkdir -p "$work" "$(dirname "$prefix")"
  configure_target "$target" "$work"
  compile_target "$target" "$work"
  rm -rf "$stage" "$prefix"
  install_target "$target" "$work" "$stage"
  {
    echo "PDFium $(engine_version), $(source_identity | head -n 1)"
    "$(compiler_of "$target")" --version | head -n 1
  } >"$stage/complete"
  mv "$stage" "$prefix"
  rm -rf "$work"
  phase_done "$target engine"
  say "The $target engine is in $prefix"
}
