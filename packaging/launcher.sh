#!/bin/sh
# Starts Tarvo in the folder of the user's language: the program loads "TARVO.DIC" from its current
# directory. Installed as PREFIX/bin/tarvo, and finds everything from its own place, so that PREFIX
# may be moved. The arguments go to the program as they are.
#
# The language is looked for as gettext does: LANGUAGE, a list of languages separated by ":", in its
# order; without it the first that is set of LC_ALL, LC_MESSAGES and LANG. When that locale is "C" or
# "POSIX", or none is set, LANGUAGE counts for nothing. English ends the search, as the program's own
# texts are English.
#
# Environment, to start a program that is not installed:
#   TARVO_PROGRAM  the program instead of PREFIX/lib/tarvo/tarvo
#   TARVO_SHARE    the folder that holds a folder for each language instead of PREFIX/share/tarvo
# For example, in a checkout built in build/release:
#   TARVO_PROGRAM=build/release/bin/tarvo TARVO_SHARE=build/release/translations packaging/launcher.sh
set -u

die() {
  printf 'tarvo: %s\n' "$1" >&2
  exit 1
}

# absolute PATH: prints PATH as it stands seen from any current directory.
absolute() {
  case $1 in
    /*) printf '%s' "$1" ;;
    *) printf '%s' "$PWD/$1" ;;
  esac
}

# is_english LOCALE: whether the program's own texts are in that locale's language.
is_english() {
  case $1 in
    C | C.* | POSIX | en | en[_.@]*) return 0 ;;
    *) return 1 ;;
  esac
}

# folder_of LOCALE: prints the folder of LOCALE, or of what is left of it without its codeset, its
# territory and its modifier, whichever exists first; fails when none does.
folder_of() {
  case $1 in
    '' | .* | */*) return 1 ;;
  esac
  modifier=
  case $1 in
    *@*) modifier=@${1#*@} ;;
  esac
  base=${1%%@*}
  plain=${base%%.*}
  for candidate in "$1" "$plain$modifier" "${plain%%_*}$modifier" "$base" "$plain" "${plain%%_*}"; do
    if [ -n "$candidate" ] && [ -d "$share/$candidate" ]; then
      printf '%s' "$share/$candidate"
      return 0
    fi
  done
  return 1
}

# language_folder: prints the folder of the user's language; fails when the program's own texts are
# wanted or no language of the user's has a folder.
language_folder() {
  locale=${LC_ALL:-${LC_MESSAGES:-${LANG:-C}}}
  case $locale in
    C | C.* | POSIX) return 1 ;;
  esac
  languages=${LANGUAGE:-$locale}:
  while [ -n "$languages" ]; do
    language=${languages%%:*}
    languages=${languages#*:}
    if is_english "$language"; then return 1; fi
    if folder_of "$language"; then return 0; fi
  done
  return 1
}

self=$(readlink -f -- "$0") || die "cannot find where $0 is installed"
prefix=${self%/*/*}
program=$(absolute "${TARVO_PROGRAM:-$prefix/lib/tarvo/tarvo}")
share=$(absolute "${TARVO_SHARE:-$prefix/share/tarvo}")

if [ ! -f "$program" ] || [ ! -x "$program" ]; then die "there is no program $program"; fi
folder=$(language_folder) || folder=$share
cd "$folder" 2>/dev/null || cd "$share" 2>/dev/null || die "there is no folder $share"
exec "$program" "$@"
