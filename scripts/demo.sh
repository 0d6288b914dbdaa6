# shellcheck shell=bash
# The made-up machine: a Wine prefix of its own with the agents' services and settings, and the applet opened in it.
# Sourced by run, after lib.sh and display.sh. WINEPREFIX is the machine.

BUILT="$ROOT/build/win64"
WINDOWS="$WINEPREFIX/drive_c/windows"
AGENTS="$WINDOWS/system32/vtnmgmt"
# Programs of the machine itself, which no page knows of.
TOOLS="$WINEPREFIX/drive_c/norvale"

# put FILE TARGET: copies a built file to the machine, when the one there is another.
put() {
  cmp -s "$1" "$2" || install -D "$1" "$2"
}

# Every file, on every run: what was built since then is what the machine shall have.
put_files() {
  put_product
  put_agents
}

put_product() {
  put "$BUILT/vtnmgmt.cpl" "$WINDOWS/system32/vtnmgmt.cpl"
  put "$BUILT/vthstutl.dll" "$WINDOWS/system32/vthstutl.dll"
  put "$BUILT/vtncfg.exe" "$WINDOWS/system32/vtncfg.exe"
  put "$BUILT/vtnmgmt.chm" "$AGENTS/vtmghost/vtnmgmt.chm"
  put "$BUILT/vtnmgmt_jpn.chm" "$AGENTS/vtmghost/vtnmgmt_jpn.chm"
}

# What stands in for the agents, and the machine's own programs.
put_agents() {
  put "$BUILT/demo/RB4USER.DLL" "$WINDOWS/system32/RB4USER.DLL"
  put "$BUILT/demo/shares/netapi32.dll" "$WINDOWS/system32/netapi32.dll"
  put "$BUILT/demo/VTNMHOST.DLL" "$AGENTS/vtmghost/VTNMHOST.DLL"
  put "$BUILT/demo/VTNCLNT.EXE" "$AGENTS/VTNCLNT.EXE"
  put_services
  put "$BUILT/demo/ControlPanel.exe" "$TOOLS/control.exe"
  put "$BUILT/demo/Machine.exe" "$TOOLS/Machine.exe"
  put "$BUILT/demo/Sheet.exe" "$TOOLS/Sheet.exe"
  put "$BUILT/demo/Messages.exe" "$TOOLS/Messages.exe"
}

# One program behind all services; its copies, under the names of the services' own, are made with the machine.
put_services() {
  local program
  for program in "$TOOLS"/AgentService.exe "$TOOLS"/services/*.exe; do
    [[ $program = *'*'* ]] || put "$BUILT/demo/AgentService.exe" "$program"
  done
}

# tool NAME ARGUMENT...: runs one of the machine's own programs.
tool() {
  wine "C:\\norvale\\$1.exe" "${@:2}" | tr -d '\r'
}

# make_machine: makes the machine once; later calls only bring its files up to date.
make_machine() {
  [ -e "$WINEPREFIX/.machine" ] || say "Making the demo machine ..."
  keep_wine
  put_files
  [ ! -e "$WINEPREFIX/.machine" ] || return 0
  tool Machine make || fail "the demo machine could not be made; './run --reset' makes it anew."
  touch "$WINEPREFIX/.machine"
}

remove_machine() {
  say "Removing the demo machine ..."
  stop_machine
  rm -rf "$WINEPREFIX"
}

# start_machine [OPTION...]: brings the machine up, with options of `Machine start`.
start_machine() {
  say "Starting the services of the demo machine ..."
  tool Machine start "$@" || fail "the services of the demo machine did not start."
}

stop_machine() {
  wineserver -k >/dev/null 2>&1 || true
  unset KEPT_WINE
}

# receive_traps: shows the traps that the machine sends, where Debian's receiver of traps is installed. The caller ends
# it with stop_receiving_traps.
receive_traps() {
  local receiver port=10162
  receiver=$(PATH="$PATH:/usr/sbin" command -v snmptrapd) || return 0
  "$receiver" -f -C -n -m '' -On --disableAuthorization=yes -F 'Trap received: %v\n' -Lo "udp:127.0.0.1:$port" \
    2>/dev/null 8>&- &
  TRAP_RECEIVER_PID=$!
  export VTN_TRAP_PORT=$port
}

stop_receiving_traps() {
  [ -z "${TRAP_RECEIVER_PID:-}" ] || kill "$TRAP_RECEIVER_PID" 2>/dev/null || true
  TRAP_RECEIVER_PID=
}

# open_applet [ARGUMENT...]: opens the applet as Control Panel does, and ends when it is closed. Its shares are those
# of the stand-in, which is put before Wine's own library.
open_applet() {
  WINEDLLOVERRIDES="$WINEDLLOVERRIDES;netapi32=n,b" wine 'C:\norvale\control.exe' 'C:\windows\system32\vtnmgmt.cpl' "$@"
}

# open_prompt: a command prompt of the machine, for vtncfg; on the caller's terminal, or with the caller's input.
open_prompt() {
  cd "$WINEPREFIX/drive_c" || return
  WINEDLLOVERRIDES="$WINEDLLOVERRIDES;netapi32=n,b" wine cmd
}

# save_sheet FILE GEOMETRY: a picture of the sheet.
save_sheet() {
  picture "$1" "$2"
  say "Saved $1"
}

# save_pages DIRECTORY GEOMETRY: a picture of each page of the sheet, under the page's name.
save_pages() {
  local count index name
  count=$(tool Sheet pages) || fail "the sheet's pages could not be counted."
  for ((index = 0; index < count; index++)); do
    name=$(tool Sheet page "$index") || fail "the sheet's pages could not be shown."
    save_sheet "$1/$name.png" "$2"
  done
}

# save_messages DIRECTORY: a picture of each message box and of each text of the please-wait dialog, under its name.
save_messages() {
  local name place program input output
  coproc MESSAGES { wine 'C:\norvale\Messages.exe' 'C:\windows\system32\vtnmgmt.cpl'; }
  program=$MESSAGES_PID
  exec {output}<&"${MESSAGES[0]}" {input}>&"${MESSAGES[1]}"
  while read -r -t 60 name place <&"$output"; do
    picture "$1/$name.png" "${place%$'\r'}"
    printf '\n' >&"$input"
  done
  exec {output}<&- {input}>&-
  wait "$program" || fail "the messages could not be shown."
  say "Saved the messages in $1"
}

# save_contact_sheet DIRECTORY: all pictures in it and its directory "messages" as one, each above its name.
save_contact_sheet() {
  local sheet="$1/contact-sheet.png" parts
  rm -f "$sheet"
  parts=$(mktemp -d)
  tile 3 "$parts/pages.png" "$1"/*.png
  tile 4 "$parts/messages.png" "$1"/messages/*.png
  convert "$parts"/pages.png "$parts"/messages.png -append +repage "$sheet"
  rm -r "$parts"
  say "Saved $sheet"
}

# tile COLUMNS FILE PICTURE...: puts the pictures side by side into FILE, all in fields of the size of the largest.
tile() {
  local font=/usr/share/fonts/truetype/liberation/LiberationSans-Regular.ttf size
  size=$(identify -format '%w %h\n' "${@:3}" | awk '{ if ($1 > w) w = $1; if ($2 > h) h = $2 } END { print w "x" h }')
  montage -font "$font" -label '%t' "${@:3}" -geometry "$size>+8+8" -tile "$1x" "$2"
}
