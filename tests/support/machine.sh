# shellcheck shell=bash
# A made-up machine for one test: a copy of one that is made once per build, so that the test may do to it what it likes
# and run beside others. Its name is that of the test: $MACHINE, or else the script's. Sourced by tests; then
# scripts/demo.sh knows the machine.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"
source "$ROOT/scripts/display.sh"

MACHINES="$ROOT/build/win64/machine"
WINEPREFIX="$MACHINES/${MACHINE:-$(basename "$0")}"
export WINEPREFIX
source "$ROOT/scripts/demo.sh"

# make_original: what the machines are copies of.
make_original() {
  local -x WINEPREFIX="$MACHINES/original"
  make_prefix
  wineserver -k >/dev/null 2>&1 || true
}

# copy_machine: the files of a copy are those of the original until they are replaced. Wine writes the registry's into
# place when they have two names, so these are copied.
copy_machine() {
  make_original
  remove_copy
  cp -al "$MACHINES/original" "$WINEPREFIX"
  cp --remove-destination "$MACHINES/original"/*.reg "$WINEPREFIX"
}

remove_copy() {
  [ ! -e "$WINEPREFIX" ] || wineserver -k >/dev/null 2>&1 || true
  rm -rf "$WINEPREFIX"
}

# end_machine: ends what runs there. The machine of a test that failed stays to be looked at.
end_machine() {
  local code=$?
  stop_machine
  stop_xvfb
  [ "$code" != 0 ] || rm -rf "$WINEPREFIX"
}

# keep_others_away: a second run of the same test waits for the first, which it would end otherwise. Nothing that lives
# longer than the test may inherit the lock.
keep_others_away() {
  mkdir -p "$MACHINES"
  exec 8>"$WINEPREFIX.in-use"
  flock -n 8 || { say "Waiting for the same test, which runs already ..." && flock 8; }
}

# use_machine: a new copy of the machine, on a display of its own; its programs end with the test.
use_machine() {
  trap end_machine EXIT
  keep_others_away
  start_xvfb
  copy_machine
}

# expect WHAT EXPECTED ACTUAL: ends the test unless both texts are the same.
expect() {
  [ "$2" = "$3" ] || fail "$1: expected '$2', found '${3:0:2000}'."
}
