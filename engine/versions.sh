# The one place where the engine's sources are pinned. Sourced by engine/build.
# shellcheck shell=bash disable=SC2034

# PDFium comes inside Debian's chromium source package.
CHROMIUM_PACKAGE_VERSION=150.0.7871.100-1~deb12u1

# Source packages of the libraries that the Windows DLL holds. Their versions
# are the ones of the Debian release this runs on, with its security fixes.
LIBRARY_SOURCE_PACKAGES=(freetype harfbuzz libjpeg-turbo mimalloc openjpeg2)
