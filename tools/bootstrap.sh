# Sourced by run, test, .ci/run and the tools: installs packages, configures and builds a preset.
# Everything that is said on the way goes to standard error; standard output is the caller's.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

packages_build=(g++ cmake ninja-build pkg-config libcli11-dev libfmt-dev nlohmann-json3-dev
                libpq-dev libsodium-dev libsqlite3-dev libutf8proc-dev)
packages_test=(libgtest-dev libgmock-dev lld zsh fish groff-base)
packages_desktop=(qt6-base-dev qt6-l10n-tools qt6-translations-l10n)
packages_desktop_x=(xvfb openbox qt6-qpa-plugins)
packages_moving=(mdbtools-dev)
packages_bench=(libbenchmark-dev mdbtools)
packages_windows=(g++-mingw-w64-x86-64-posix g++-mingw-w64-i686-posix mingw-w64-tools libwine
                  libwine-dev msitools wixl)
packages_wine=(wine wine64 xvfb xauth googletest)
packages_ci=(ccache clang-14 clang-format-14 clang-tidy-14 libclang-rt-14-dev gcovr debootstrap openssl osslsigncode
             postgresql)

say() { printf '%s\n' "$*" >&2; }

die() {
  say "$*"
  exit 1
}

# Installs whichever of the named packages are missing. Costs one dpkg-query when none is.
ensure_packages() {
  [ -z "${QORCRED_NO_INSTALL:-}" ] || return 0
  if ! command -v dpkg-query > /dev/null || ! command -v apt-get > /dev/null; then
    if command -v cmake > /dev/null && command -v ninja > /dev/null; then
      return 0  # another system, set up by hand: CMake says what it does not find
    fi
    die "This is not a Debian or Ubuntu machine: install what these packages hold, then try again:
  $*"
  fi

  local installed name missing=()
  installed=" $(dpkg-query -W -f '${db:Status-Status}:${Package} ' "$@" 2> /dev/null || true)"
  for name in "$@"; do
    [[ $installed == *" installed:$name "* ]] || missing+=("$name")
  done
  [ ${#missing[@]} -gt 0 ] || return 0

  say "Installing: ${missing[*]}"
  local apt=(env DEBIAN_FRONTEND=noninteractive NEEDRESTART_MODE=l
             apt-get -q -y -o DPkg::Lock::Timeout=300)
  if [ "$(id -u)" != 0 ]; then
    command -v sudo > /dev/null || install_failed "There is no sudo here." "${missing[@]}"
    # sudo may ask for a password, but only at a terminal.
    if [ -t 0 ] && [ -t 2 ]; then apt=(sudo "${apt[@]}"); else apt=(sudo -n "${apt[@]}"); fi
  fi
  local log
  log=$(mktemp)
  if ! { "${apt[@]}" update &&
         "${apt[@]}" install --no-install-recommends "${missing[@]}"; } \
       > "$log" 2>&1 < /dev/null; then
    tail -n 15 "$log" >&2
    rm -f "$log"
    install_failed "The packages could not be installed." "${missing[@]}"
  fi
  rm -f "$log"
  # What was configured without these packages may have left something out for want of them.
  rm -f "$root"/build/*/.configured-*
}

install_failed() {
  local reason=$1
  shift
  die "$reason As an administrator, run
  apt-get update && apt-get install --no-install-recommends $*
and try again. (With QORCRED_NO_INSTALL=1 nothing is installed or looked for.)"
}

# The folder of preset $1. The benchmarks are built beside what they measure.
folder_of() {
  if [ "$1" = bench ]; then echo "$root/build/release"; else echo "$root/build/$1"; fi
}

# Configures preset $1 unless that was done from this folder with these presets.
configure() {
  local preset=$1 folder fresh=() done_from
  folder=$(folder_of "$preset")
  done_from=$folder/.configured-$preset
  if [ -e "$done_from" ]; then
    if [ "$(< "$done_from")" != "$root" ]; then
      fresh=(--fresh)  # the tree was moved or copied together with its build folder
    elif [ ! "$root/CMakePresets.json" -nt "$done_from" ]; then
      return 0
    fi
  fi
  local version
  version=$(cmake --version | sed -n '1s/[^0-9]*\([0-9.]*\).*/\1/p')
  if [ "$(printf '%s\n' 3.25 "$version" | sort -V | head -n 1)" != 3.25 ]; then
    die "CMake 3.25 or newer is needed and this is $version. Debian 12 and Ubuntu 24.04 bring one."
  fi
  mkdir -p "$folder"
  if ! (cd "$root" && cmake "${fresh[@]}" --preset "$preset") > "$folder/configure.log" 2>&1; then
    tail -n 40 "$folder/configure.log" >&2
    die "Configuring '$preset' failed; the whole log is $folder/configure.log"
  fi
  printf '%s\n' "$root" > "$done_from"
}

# Shows Ninja's output in brief while it goes to the log: a counter at a terminal, else one line.
show_progress() {
  local preset=$1 log=$2 line started=
  while IFS= read -r line; do
    printf '%s\n' "$line" >> "$log"
    [[ $line =~ ^\[([0-9]+/[0-9]+)\] ]] || continue
    # Before these lines Ninja does not know yet how many steps there are.
    [[ $line != *"Re-running CMake"* && $line != *"Re-checking globbed"* ]] || continue
    if [ -t 2 ]; then
      printf '\rBuilding %s [%s] ' "$preset" "${BASH_REMATCH[1]}" >&2
    elif [ -z "$started" ]; then
      say "Building $preset (${BASH_REMATCH[1]#*/} steps)"
    fi
    started=yes
  done
  if [ -n "$started" ] && [ -t 2 ]; then printf '\n' >&2; fi
}

# Builds the targets that follow preset $1, or all. Says nothing when nothing is to be done.
build() {
  local preset=$1 folder
  folder=$(folder_of "$1")
  shift
  mkdir -p "$folder"
  # One build at a time in a folder; the lock ends with the block.
  {
    if command -v flock > /dev/null; then flock 9; fi
    configure "$preset"
    : > "$folder/build.log"
    if ! ninja -C "$folder" "$@" 2>&1 9>&- | show_progress "$preset" "$folder/build.log"; then
      if grep -q '^FAILED: build.ninja' "$folder/build.log"; then
        tail -n 40 "$folder/build.log" >&2  # CMake's own message stands before that line
      else
        sed -n '/^FAILED: /,$p' "$folder/build.log" | head -n 60 >&2
      fi
      die "Building '$preset' failed; the whole log is $folder/build.log"
    fi
  } 9> "$folder/.lock"
}

# The paths of all C++ files of the project from its root, ended by NUL; arguments narrow the search
# to folders.
list_sources() {
  local folders=("$@")
  [ $# -gt 0 ] || folders=(.)
  (cd "$root" && find "${folders[@]}" -path ./build -prune -o \
     \( -name '*.h' -o -name '*.cpp' \) -type f -print0 | sort -z)
}

# How many single cases passed and failed, from a log of ctest ($1): those that Google Test counted,
# and one for each test that is no such program or was cut off before it could count. Skipped ones
# are told where there are any.
count_cases() {
  awk '/^\[  PASSED  \] [0-9]+ test/ { passed += $4; counted = 1 }
       /^\[  FAILED  \] [0-9]+ test/ { failed += $4; counted = 1; refused = 1 }
       /^\[  SKIPPED \] [0-9]+ test/ { skipped += $4 }
       /^Test Passed\.$/ { if (!counted) passed++; counted = refused = 0 }
       /^Test Failed\.$/ { if (!refused) failed++; counted = refused = 0 }
       END { printf "%d passed, %d failed", passed, failed
             if (skipped) printf ", %d skipped", skipped
             print "" }' "$1"
}

# Prints a heading for what follows, with the minutes and seconds since the script began.
stage() {
  printf '\n== %s  [%d:%02d]\n' "$*" $((SECONDS / 60)) $((SECONDS % 60)) >&2
}
