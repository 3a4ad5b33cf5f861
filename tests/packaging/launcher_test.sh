#!/usr/bin/env bash
# Tests the launcher in an installation made for the purpose, whose program tells where it was started
# and with which arguments. Usage: launcher_test.sh LAUNCHER
set -euo pipefail

if [[ $# -ne 1 || ! -x $1 ]]; then
  echo "usage: launcher_test.sh LAUNCHER" >&2
  exit 2
fi

root=$(mktemp -d)
root=$(readlink -f "$root")
trap 'rm -rf "$root"' EXIT
readonly kPrefix="$root/a prefix with  blanks"
readonly kShare="$kPrefix/share/tarvo"
passed=0
failed=0

mkdir -p "$kPrefix/bin" "$kPrefix/lib/tarvo" "$kShare"/{de,fr,es,pt_BR,sr@latin}
cp "$1" "$kPrefix/bin/tarvo"
cat >"$kPrefix/lib/tarvo/tarvo" <<'PROGRAM'
#!/bin/sh
printf 'folder=%s\n' "$(pwd -P)"
for argument in "$@"; do printf '[%s]\n' "$argument"; done
exit "${EXIT_STATUS:-0}"
PROGRAM
chmod +x "$kPrefix/lib/tarvo/tarvo"

# expect WHAT WANTED GOT: counts one assertion and tells both values when they differ.
expect() {
  if [[ $2 == "$3" ]]; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    printf 'FAILED: %s\n  wanted: %q\n  got:    %q\n' "$1" "$2" "$3"
  fi
}

# launch VARIABLE=VALUE... [-- ARGUMENT...]: runs the installed launcher with these variables only and
# prints what it wrote, errors included.
launch() {
  local variables=()
  while [[ $# -gt 0 && $1 != -- ]]; do
    variables+=("$1")
    shift
  done
  [[ $# -gt 0 ]] && shift
  env -i PATH="$PATH" ${variables[@]+"${variables[@]}"} "$kPrefix/bin/tarvo" "$@" 2>&1
}

# starts_in WHAT LANGUAGE VARIABLE=VALUE...: the program starts in that language's folder ("" for the
# one above, without a dictionary).
starts_in() {
  local what=$1 language=$2
  shift 2
  expect "$what" "folder=$kShare${language:+/$language}" "$(launch "$@" || true)"
}

starts_in "LANG chooses the language without its territory and codeset" de LANG=de_DE.UTF-8
starts_in "a bare language is found" fr LANG=fr
starts_in "a territory without a codeset is stripped" es LANG=es_MX
starts_in "a modifier is stripped when no folder has it" de LANG=de_AT.UTF-8@euro
starts_in "a folder with the modifier is preferred" sr@latin LANG=sr_RS.UTF-8@latin
starts_in "a folder with the territory is found" pt_BR LANG=pt_BR.UTF-8
starts_in "a sibling territory does not stand in" "" LANG=pt_PT.UTF-8
starts_in "an unknown language has no dictionary" "" LANG=xx_YY.UTF-8
starts_in "no variable set means English" ""
starts_in "empty variables count as not set" de LC_ALL= LC_MESSAGES= LANGUAGE= LANG=de_DE.UTF-8

starts_in "LC_MESSAGES comes before LANG" fr LC_MESSAGES=fr_FR.UTF-8 LANG=de_DE.UTF-8
starts_in "LC_ALL comes before LC_MESSAGES" es LC_ALL=es_ES LC_MESSAGES=fr_FR LANG=de_DE
starts_in "another category is not asked" de LC_TIME=fr_FR.UTF-8 LANG=de_DE.UTF-8

starts_in "LANGUAGE skips a language without a folder" fr LANGUAGE=xx:fr LANG=de_DE.UTF-8
starts_in "LANGUAGE takes its first language with a folder" es LANGUAGE=es_MX:fr:de LANG=de_DE.UTF-8
starts_in "LANGUAGE comes before LC_ALL" fr LANGUAGE=fr LC_ALL=de_DE.UTF-8
starts_in "empty entries of LANGUAGE are skipped" fr LANGUAGE=::fr: LANG=de_DE.UTF-8
starts_in "the locale does not follow an exhausted LANGUAGE" "" LANGUAGE=xx:yy LANG=de_DE.UTF-8
starts_in "LC_ALL=C overrides LANGUAGE" "" LANGUAGE=fr LC_ALL=C LANG=de_DE.UTF-8
starts_in "LC_ALL=POSIX overrides LANGUAGE" "" LANGUAGE=fr LC_ALL=POSIX
starts_in "C.UTF-8 overrides LANGUAGE as C does" "" LANGUAGE=fr LANG=C.UTF-8
starts_in "an unset locale overrides LANGUAGE" "" LANGUAGE=fr

starts_in "English has no dictionary" "" LANG=en_GB.UTF-8
starts_in "English ends the search in LANGUAGE" "" LANGUAGE=en_US:de LANG=en_US.UTF-8
starts_in "C in LANGUAGE ends the search" "" LANGUAGE=C:de LANG=fr_FR.UTF-8

starts_in "a path is not a language" "" LANGUAGE=../tarvo/de LANG=de_DE.UTF-8
starts_in "the parent folder is not a language" "" LANGUAGE=.. LANG=de_DE.UTF-8
starts_in "a territory alone is not a language" fr LANGUAGE=_DE:fr LANG=de_DE.UTF-8
starts_in "a pattern is not expanded" "" "LANGUAGE=d*" LANG=fr_FR.UTF-8

# shellcheck disable=SC2016  # a dollar sign must arrive as one
expect "arguments pass through as they are" \
  "folder=$kShare/de"$'\n[/a]\n[two words]\n[]\n[ * ]\n[$HOME "x"]\n[-n]\n[--]\n[]' \
  "$(launch LANG=de -- /a "two words" "" " * " '$HOME "x"' -n -- "" || true)"

status=0
launch EXIT_STATUS=7 >/dev/null || status=$?
expect "the program's exit status is the launcher's" 7 "$status"

mkdir "$root/elsewhere"
ln -s "$kPrefix/bin/tarvo" "$root/elsewhere/link"
ln -s link "$root/elsewhere/tarvo"
expect "a link to the launcher finds the installation" "folder=$kShare/de" \
  "$(env -i PATH="$root/elsewhere:$PATH" LANG=de tarvo 2>&1 || true)"

mkdir -p "$root/build/bin" "$root/build/translations/de"
cp "$kPrefix/lib/tarvo/tarvo" "$root/build/bin/tarvo"
expect "a program and a share folder given by relative paths are used" \
  "folder=$root/build/translations/de" \
  "$(cd "$root"; launch TARVO_PROGRAM=build/bin/tarvo TARVO_SHARE=build/translations LANG=de || true)"

status=0
message=$(launch TARVO_PROGRAM="$root/nothing") || status=$?
expect "a missing program is told in one sentence" "tarvo: there is no program $root/nothing" "$message"
expect "a missing program is a failure" 1 "$status"

status=0
message=$(launch TARVO_SHARE="$root/nothing") || status=$?
expect "a missing share folder is told in one sentence" "tarvo: there is no folder $root/nothing" "$message"
expect "a missing share folder is a failure" 1 "$status"

mv "$kPrefix" "$root/moved"
expect "a moved installation still finds its language" "folder=$root/moved/share/tarvo/es" \
  "$(env -i PATH="$PATH" LANG=es_MX "$root/moved/bin/tarvo" 2>&1 || true)"

echo "launcher: $passed assertions held, $failed failed"
[[ $failed -eq 0 ]]
