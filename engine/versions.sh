# The one place where the engine's sources are pinned. Sourced by engine/build.
# shellcheck shell=bash disable=SC2034

# Debian source packages and their versions: PDFium comes inside chromium, and the Windows DLL
# holds the libraries. When Debian has replaced one of these versions, engine/build takes the
# newest that is there.
declare -A PINNED_VERSIONS=(
  [chromium]=150.0.7871.100-1~deb12u1
  [freetype]=2.12.1+dfsg-5+deb12u4
  [harfbuzz]=6.0.0+dfsg-3
  [libjpeg-turbo]=1:2.1.5-2
  [mimalloc]=2.0.9+ds-2
  [openjpeg2]=2.5.0-2+deb12u3
)
LIBRARY_SOURCE_PACKAGES=(freetype harfbuzz libjpeg-turbo mimalloc openjpeg2)
