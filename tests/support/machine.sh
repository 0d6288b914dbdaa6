# shellcheck shell=bash
# A made-up machine for one test: a copy of one that is made once per build, with a display of its own, so that the test
# may do to it what it likes and run beside others. Sourced by tests; then scripts/demo.sh knows the machine.

source "$(dirname "${BASH_SOURCE[0]}")/../../scripts/lib.sh"
source "$ROOT/scripts/display.sh"

WINEPREFIX="$ROOT/build/win64/machine/$(basename "$0")"
export WINEPREFIX
source "$ROOT/scripts/demo.sh"

# The files of a copy are those of the original until they are replaced. Wine writes the registry's into place when they
# have two names, so these are copied.
copy_machine() {
  local machine=$WINEPREFIX
  WINEPREFIX="$ROOT/build/win64/machine/original"
  make_prefix
  wineserver -k >/dev/null 2>&1 || true
  rm -rf "$machine"
  cp -al "$WINEPREFIX" "$machine"
  cp --remove-destination "$WINEPREFIX"/*.reg "$machine"
  WINEPREFIX=$machine
  wineserver -k >/dev/null 2>&1 || true
}

end_machine() {
  wineserver -k >/dev/null 2>&1 || true
  stop_xvfb
}

# use_machine: copies the machine, whose programs end with the test.
use_machine() {
  trap end_machine EXIT
  start_xvfb
  copy_machine
}

# expect WHAT EXPECTED ACTUAL: ends the test unless both texts are the same.
expect() {
  [ "$2" = "$3" ] || fail "$1: expected '$2', found '${3:0:2000}'."
}
