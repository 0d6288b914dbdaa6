# shellcheck shell=bash
# Installs what is missing on a fresh Debian 12 and builds. Sourced by run, test and bench, after lib.sh.

# The Debian packages, in one place: to build, to run and take pictures, for a Japanese system, to make the installation
# package, to check sources.
BUILD_PACKAGES=(cmake ninja-build g++-mingw-w64-x86-64-posix googletest libcli11-dev nlohmann-json3-dev python3 fp-utils)
RUN_PACKAGES=(wine wine64 fonts-wine fonts-liberation xvfb x11-utils imagemagick)
JAPANESE_PACKAGES=(locales fonts-vlgothic)
PACKAGE_PACKAGES=(wixl msitools faketime osslsigncode zip)
CHECK_PACKAGES=(clang-format-14 clang-tidy-14 cppcheck doxygen libchm-bin python3-jsonschema shellcheck)
NATIVE_PACKAGES=(g++)
COVERAGE_PACKAGES=(gcovr)
FLEET_PACKAGES=(ansible-core ansible-lint python3)

# set_up_for_run, set_up_for_run_in_japanese, set_up_for_package, set_up_for_test: what each of these needs, and no more.
set_up_for_run() {
  ensure_packages "${BUILD_PACKAGES[@]}" "${RUN_PACKAGES[@]}"
}

set_up_for_run_in_japanese() {
  ensure_packages "${BUILD_PACKAGES[@]}" "${RUN_PACKAGES[@]}" "${JAPANESE_PACKAGES[@]}"
  ensure_japanese
}

set_up_for_package() {
  ensure_packages "${BUILD_PACKAGES[@]}" "${PACKAGE_PACKAGES[@]}"
}

set_up_for_test() {
  ensure_packages "${BUILD_PACKAGES[@]}" "${RUN_PACKAGES[@]}" "${JAPANESE_PACKAGES[@]}" "${CHECK_PACKAGES[@]}" \
    "${NATIVE_PACKAGES[@]}" "${PACKAGE_PACKAGES[@]}" openssl
  ensure_japanese
}

# Beside what the other tests need.
set_up_for_fleet() {
  ensure_packages "${FLEET_PACKAGES[@]}"
}

set_up_for_coverage() {
  ensure_packages cmake ninja-build googletest libcli11-dev nlohmann-json3-dev "${NATIVE_PACKAGES[@]}" "${COVERAGE_PACKAGES[@]}"
}

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

missing_packages() {
  local package
  for package in "$@"; do
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null)" = installed ] || printf '%s\n' "$package"
  done
}

# ensure_packages NAME...: installs those that are missing; asks apt for nothing when none is.
ensure_packages() {
  local missing
  command -v dpkg-query >/dev/null || fail "this set-up knows Debian 12 only, and dpkg-query is not here."
  mapfile -t missing < <(missing_packages "$@")
  [ ${#missing[@]} -gt 0 ] || return 0
  [ "$(id -u)" = 0 ] || command -v sudo >/dev/null ||
    fail "these packages are missing; install them as root, or install sudo: ${missing[*]}"
  say "Installing ${missing[*]} ..."
  quietly "the packages could not be installed. apt-get says:" install_packages "${missing[@]}"
}

install_packages() {
  as_root env DEBIAN_FRONTEND=noninteractive apt-get update &&
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "$@"
}

# ensure_japanese: the locale under which Wine is a Japanese system. Its packages must be there.
ensure_japanese() {
  [[ $(locale -a 2>/dev/null) != *ja_JP.utf8* ]] || return 0
  say "Generating the ja_JP.UTF-8 locale ..."
  quietly "the ja_JP.UTF-8 locale could not be generated:" as_root localedef -i ja_JP -f UTF-8 ja_JP.UTF-8
}

# build TARGET...: what the build prints shows only when it fails.
build() {
  say "Building ..."
  quietly "the build failed:" build_targets win64 "$@"
}

# build_everything PRESET...: all of other builds.
build_everything() {
  local preset
  for preset in "$@"; do
    quietly "the build of preset $preset failed:" build_targets "$preset" all
  done
}

# build_for_tests PRESET OPTION...: what the tests need that CTest's options select.
build_for_tests() {
  local files
  quietly "the build of preset $1 could not be set up:" build_targets "$1" build.ninja
  mapfile -t files < <("$ROOT/scripts/files-of-tests" "$ROOT/build/$1" "${@:2}")
  [ -z "${files[*]}" ] || quietly "the build of preset $1 failed:" build_targets "$1" "${files[@]}"
}

# build_targets PRESET TARGET...
build_targets() {
  cd "$ROOT" || return
  [ -e "build/$1/build.ninja" ] || cmake --preset "$1" || return
  cmake --build --preset "$1" --target "${@:2}"
}
