# shellcheck shell=bash
# What run, test, bench and wine-run share: messages, the file tree's places, Wine prefixes.

ROOT=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export ROOT

# Crashes end a program at once instead of waiting for somebody at a debugger; Mono and Gecko are not asked for.
export WINEDEBUG="${WINEDEBUG:--all}" WINEDLLOVERRIDES="${WINEDLLOVERRIDES:-mscoree,mshtml,winedbg.exe=}"

# say TEXT: one line on what is being done.
say() { printf '%s\n' "$*"; }

# fail SENTENCE: ends the script with one sentence that says what is wrong and what to do.
fail() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# quietly SENTENCE COMMAND...: the output of the command shows only when it fails, below the sentence that ends the script then.
# It goes to a file: what Wine leaves running would keep a pipe open.
quietly() {
  local sentence=$1 words
  shift
  mkdir -p "$ROOT/build"
  words=$(mktemp "$ROOT/build/words.XXXXXX")
  if "$@" >"$words" 2>&1; then
    rm "$words"
  else
    sentence+=$'\n'$(tail -n 50 "$words")
    rm "$words"
    fail "$sentence"
  fi
}

# make_prefix: makes the Wine prefix in WINEPREFIX, unless it is there; only one caller makes it, others wait.
make_prefix() {
  [ ! -e "$WINEPREFIX/.ready" ] || return 0
  mkdir -p "$(dirname "$WINEPREFIX")"
  (
    flock 9
    [ -e "$WINEPREFIX/.ready" ] || fill_prefix
  ) 9>"$WINEPREFIX.lock"
}

# The server that these commands start must not inherit the lock, or it would hold it for as long as it lives.
fill_prefix() {
  mkdir -p "$WINEPREFIX"
  quietly "Wine could not make its prefix in $WINEPREFIX. wineboot says:" wineboot -i 9>&-
  give_fonts 9>&-
  use_virtual_desktop 9>&-
  wineserver -w 9>&-
  touch "$WINEPREFIX/.ready"
}

# Wine does not find its own fonts where Debian puts them, and the closest that it then finds have other widths. The
# Japanese dialog font is one of even width unless Wine is given the proportional one.
give_fonts() {
  cp /usr/share/wine/fonts/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
  wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v 'MS UI Gothic' /d 'VL PGothic' /f >/dev/null
}

# start_server: one that stays. That of a program that has just ended goes after some seconds.
start_server() {
  wineserver -p || { timeout 10 wineserver -w && wineserver -p; }
}

# keep_wine: Wine stays up from one program to the next, until `wineserver -k`. Its services are started here, away
# from anybody's output: they would hold on to that of the first program, and who reads it would never see its end.
keep_wine() {
  [ "${KEPT_WINE:-}" != "$WINEPREFIX" ] || return 0
  make_prefix
  quietly "Wine is in use in $WINEPREFIX, or cannot start there. To end what runs: WINEPREFIX=$WINEPREFIX wineserver -k" \
    start_server
  quietly "Wine does not start in $WINEPREFIX. It says:" wine wineboot
  export KEPT_WINE=$WINEPREFIX
}

# use_virtual_desktop: of the size SCREEN. On a bare X server each closing dialog would wait for a window manager that is
# not there; inside a virtual desktop it does not.
use_virtual_desktop() {
  wine reg add 'HKCU\Software\Wine\Explorer' /v Desktop /d vtnmgmt /f >/dev/null
  wine reg add 'HKCU\Software\Wine\Explorer\Desktops' /v vtnmgmt /d "${SCREEN:-1024x768}" /f >/dev/null
}

# use_real_desktop: windows appear on the display itself, as those of other programs do.
use_real_desktop() {
  wine reg delete 'HKCU\Software\Wine\Explorer' /v Desktop /f >/dev/null 2>&1 || true
}

# use_resolution DPI: what programs take for the dots per inch of the screen, from the next one on.
use_resolution() {
  wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null
}
