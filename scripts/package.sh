# shellcheck shell=bash
# The product's files, and their signatures. Sourced by package and by the test of the package, after lib.sh.

BUILT="$ROOT/build/win64"
PRODUCT_NAME="Norvale Management Agents Control Panel"

# What is built (by the script that sources this) and what of it is installed.
# shellcheck disable=SC2034
PRODUCT_TARGETS=(vtnmgmt vthstutl help_files vtncfg)
PRODUCT_FILES=(vtnmgmt.cpl vthstutl.dll vtnmgmt.chm vtnmgmt_jpn.chm vtncfg.exe vtncfg.dsc.resource.json)

product_version() {
  sed -nE 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$BUILT/CMakeCache.txt"
}

# use_source_date: the time that the package's files and signatures carry, that of the last commit: the same sources give
# the same bytes.
use_source_date() {
  SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git -C "$ROOT" log -1 --format=%ct 2>/dev/null ||
    stat -c %Y "$ROOT/CMakeLists.txt")}
  export SOURCE_DATE_EPOCH
}

# stage_product DIRECTORY: copies what is installed to a directory that then holds nothing else.
stage_product() {
  rm -rf "$1"
  mkdir -p "$1"
  (cd "$BUILT" && cp -- "${PRODUCT_FILES[@]}" "$1")
}

# sign CERTIFICATE KEY FILE...: signs programs, libraries and packages, in place.
sign() {
  local certificate=$1 key=$2 file
  shift 2
  for file in "$@"; do
    osslsigncode sign -certs "$certificate" -key "$key" -h sha256 -n "$PRODUCT_NAME" -st "$SOURCE_DATE_EPOCH" \
      -in "$file" -out "$file.signed" >"$ROOT/build/sign.log" 2>&1 || return
    mv "$file.signed" "$file"
  done
}

# Of what is installed, what can carry a signature.
signable_files() {
  find "$1" -name '*.cpl' -o -name '*.dll' -o -name '*.exe'
}

# make_package VERSION FILES PACKAGE [CERTIFICATE KEY]: makes a package of FILES; with a certificate, all is signed.
make_package() {
  local files
  if [ $# -gt 3 ]; then
    mapfile -t files < <(signable_files "$2" | sort)
    sign "$4" "$5" "${files[@]}" || return
  fi
  "$ROOT/scripts/build-package" "$1" "$2" "$3" || return
  [ $# -le 3 ] || sign "$4" "$5" "$3"
}

# stage_tests DIRECTORY: what the test programs are, and what they need, as it lies in the build directory; and the file
# that runs them.
stage_tests() {
  local file
  rm -rf "$1"
  (cd "$BUILT" && find vtnmgmt.cpl vthstutl.dll demo tests/applet tests/demo tests/sweep tests/unit -type f \
    \( -iname '*.exe' -o -iname '*.dll' -o -name '*.cpl' -o -path '*/profile/corpus/*' \)) |
    while IFS= read -r file; do
      install -D "$BUILT/$file" "$1/$file"
    done
  find "$1/tests" -name '*.exe' -exec x86_64-w64-mingw32-strip {} +
  (cd "$1" && find tests -name '*_test.exe' | LC_ALL=C sort | sed 's|/|\\|g; s|$|\r|' >programs.txt)
  sed "s/@VERSION@/$(product_version)/; s/\$/\r/" "$ROOT/deploy/tests/run-tests.cmd" >"$1/run-tests.cmd"
}
