# shellcheck shell=bash disable=SC2034
# The Debian packages that the project needs, by purpose. Sourced by ./run and ./test.

kBuildPackages=(
  cmake
  g++
  gettext
  libbenchmark-dev
  libgmock-dev
  libgtest-dev
  libisal-dev
  libsystemd-dev
  libxcb1-dev
  ninja-build
  python3
  qt6-base-dev
  zlib1g-dev
)

# What the program shows and speaks with. The platform's own dialogs and texts come with the
# translations; without a font there is no legible character. Files and folders are opened by
# "xdg-open".
kProgramPackages=(
  fonts-dejavu-core
  fonts-liberation
  qt6-qpa-plugins
  qt6-translations-l10n
  xdg-utils
)

# A display that nobody sees, with a window manager, and the program read and driven from outside.
kVirtualDisplayPackages=(
  at-spi2-core
  dbus
  imagemagick
  openbox
  python3-gi
  wmctrl
  x11-utils
  xdotool
  xvfb
)

kTestPackages=(
  clang-format
  clang-tidy
  locales
  libarchive-tools
  libglib2.0-bin
  p7zip-full
  strace
  unzip
  zip
)

# The fuzzer, its sanitizers and the compiler they belong to.
kFuzzPackages=(
  clang
  libclang-rt-14-dev
)

# Building for Windows: the cross compiler and zlib for it, the sources of GoogleTest, which is built for
# Windows, too, and what runs the tests.
kWindowsPackages=(
  g++-mingw-w64-x86-64-posix
  googletest
  libz-mingw-w64-dev
  wine
  wine64
)
