# Sourced by the tools that run Windows programs, also inside of the 32-bit root folder: a Wine's folder of
# its own for each of them.

wine=/usr/lib/wine/wine64
[ -x "$wine" ] || wine=wine

# Makes $1 a new prefix, in which nothing is registered, and writes what Wine says to $1.log. Wine takes its
# time for one: the first of a version is kept beside and copied. Inside of a display.
fresh_prefix() {
  local prefix=$1 kept
  kept=$root/build/wine-new-$("$wine" --version | tr -c '[:alnum:].\n' _)
  if [ ! -e "$kept/.whole" ]; then
    rm -rf "$kept"
    mkdir -p "$kept"
    # The prefix needs no browser and no managed runtime, which Wine would ask to download.
    if ! WINEPREFIX=$kept WINEDLLOVERRIDES='mscoree=;mshtml=' "$wine" wineboot -i > "$prefix.log" 2>&1; then
      tail -n 15 "$prefix.log" >&2
      die "Wine could not make its prefix $prefix"
    fi
    # No window manager runs on the display: Wine shall not wait for one.
    WINEPREFIX=$kept "$wine" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >> "$prefix.log" 2>&1 ||
      die "Wine's display could not be set up: see $prefix.log"
    WINEPREFIX=$kept wineserver -w
    touch "$kept/.whole"
  fi
  rm -rf "$prefix"
  cp -a "$kept" "$prefix"
}

# Runs what follows $1 in a new prefix $1, and once more in another new one where it fails: Wine's own
# installer fails by itself once in a long while, on a busy machine. What is wrong fails both times.
# One server serves all of a run: none is just ending when the next program starts.
twice_in_fresh_prefix() {
  local prefix=$1 status=0 attempt
  shift
  for attempt in first second; do
    status=0
    fresh_prefix "$prefix"
    wineserver -p
    "$@" || status=$?
    wineserver -k || true
    wineserver -w
    [ $status != 0 ] || return 0
    echo "The $attempt attempt failed."
  done
  return $status
}
