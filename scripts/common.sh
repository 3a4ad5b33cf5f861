# shellcheck shell=bash
# What ./run and ./test have in common. Sourced from the project's root folder.

source scripts/packages.sh

die() {
  printf '%s: %s\n' "${0##*/}" "$1" >&2
  exit 1
}

as_root() {
  if ((EUID == 0)); then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    die "packages must be installed: run this once as root, or install sudo"
  fi
}

# missing_packages PACKAGE...: prints those that are not installed, one a line.
missing_packages() {
  local installed package
  # shellcheck disable=SC2016  # the fields are dpkg-query's
  installed=$(dpkg-query -W -f '${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true)
  for package in "$@"; do
    grep -qxF "installed $package" <<<"$installed" || printf '%s\n' "$package"
  done
}

# install_packages PACKAGE...: installs what is missing through apt and says so.
install_packages() {
  local missing
  if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
    echo "There is no apt here: these packages of Debian 12 must be there in some form: $*"
    return 0
  fi
  mapfile -t missing < <(missing_packages "$@")
  ((${#missing[@]})) || return 0
  echo "Installing through apt, this once: ${missing[*]}"
  mkdir -p build
  # The list of some other source that cannot be had is no reason to stop: the next command decides.
  as_root apt-get -qq update >build/apt.log 2>&1 || true
  if ! as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq install -y --no-install-recommends \
    -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 -- "${missing[@]}" >>build/apt.log 2>&1; then
    tail -n 20 build/apt.log >&2
    die "apt could not install what is needed"
  fi
}

# configure PRESET: prepares build/PRESET. Later changes of the CMake files are noticed by the build.
configure() {
  if [[ ! -f build/$1/build.ninja || CMakePresets.json -nt build/$1/build.ninja ]]; then
    cmake --preset "$1"
  fi
}

# build PRESET [TARGET...]: builds these targets, or all.
build() {
  local preset=$1
  shift
  cmake --build --preset "$preset" ${1:+--target "$@"}
}
