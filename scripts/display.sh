# shellcheck shell=bash
# X displays and pictures of them. Sourced by run, test and bench, after lib.sh.

has_display() {
  [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1
}

# start_xvfb: a display of our own, on a number that is free. The caller ends it with stop_xvfb. File 8 is the lock of who
# uses the display, if any.
start_xvfb() {
  local number output
  mkdir -p "$ROOT/build"
  XVFB_WORDS=$(mktemp "$ROOT/build/xvfb.XXXXXX")
  exec {output}< <(exec Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp 2>"$XVFB_WORDS" 8>&-)
  XVFB_PID=$!
  read -r -t 120 number <&"$output" || fail_without_xvfb
  exec {output}<&-
  export DISPLAY=":$number"
}

fail_without_xvfb() {
  local words
  words=$(head -n 3 "$XVFB_WORDS" && echo ... && tail -n 3 "$XVFB_WORDS")
  stop_xvfb
  fail "the display that windows are to appear on did not start. Xvfb says:"$'\n'"$words"
}

stop_xvfb() {
  [ -z "${XVFB_PID:-}" ] || kill "$XVFB_PID" 2>/dev/null || true
  [ -z "${XVFB_WORDS:-}" ] || rm -f "$XVFB_WORDS"
  XVFB_PID='' XVFB_WORDS=''
}

# picture FILE GEOMETRY: saves a part of the screen (WIDTHxHEIGHT+X+Y) once it has stopped changing: programs
# paint when they get round to it, so it takes pictures until two in a row are alike.
picture() {
  local last="" now attempt
  mkdir -p "$(dirname "$1")"
  for attempt in {1..50}; do
    now=$(import -window root -crop "$2" +repage rgb:- | cksum)
    [ "$now" != "$last" ] || break
    last=$now
    [ "$attempt" -lt 50 ] || fail "the picture $1 never stopped changing."
  done
  import -window root -crop "$2" +repage "$1"
}
