# shellcheck shell=bash
# X displays and pictures of them. Sourced by run, test and bench, after lib.sh.

has_display() {
  [ -n "${DISPLAY:-}" ] && xdpyinfo >/dev/null 2>&1
}

# start_xvfb: a display of our own, on a number that is free. The caller ends it with stop_xvfb.
start_xvfb() {
  local number output
  exec {output}< <(exec Xvfb -displayfd 1 -screen 0 1280x1024x24 -nolisten tcp 2>/dev/null)
  XVFB_PID=$!
  read -r -t 30 number <&"$output" || fail "Xvfb did not start."
  exec {output}<&-
  export DISPLAY=":$number"
}

stop_xvfb() {
  [ -z "${XVFB_PID:-}" ] || kill "$XVFB_PID" 2>/dev/null || true
  XVFB_PID=
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
