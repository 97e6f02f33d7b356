# Sourced by the tools that deliver for Windows: signatures, where somebody has a key.

# Signs the file $1 in place when QORCRED_SIGNING_KEY names a file with key and certificate (PKCS#12). Its
# password is in the file that QORCRED_SIGNING_PASSWORD names; without that it has none.
sign() {
  local file=$1 password=()
  [ -n "${QORCRED_SIGNING_KEY:-}" ] || return 0
  [ -r "$QORCRED_SIGNING_KEY" ] || die "The key $QORCRED_SIGNING_KEY cannot be read"
  command -v osslsigncode > /dev/null || ensure_packages osslsigncode
  if [ -n "${QORCRED_SIGNING_PASSWORD:-}" ]; then password=(-readpass "$QORCRED_SIGNING_PASSWORD"); fi
  rm -f "$file.signed"  # nothing is overwritten
  osslsigncode sign -pkcs12 "$QORCRED_SIGNING_KEY" "${password[@]}" -h sha256 -n "qorCred controllers" \
    -in "$file" -out "$file.signed" > "$file.signing.log" 2>&1 || {
    tail -n 5 "$file.signing.log" >&2
    die "$file was not signed"
  }
  rm -f "$file.signing.log"
  mv "$file.signed" "$file"
}

# Where a DLL's headers lie, and a number in them: little_endian FILE PLACE.
little_endian() { od -A n -t u4 -j "$2" -N 4 "$1" | tr -d ' '; }
headers_of() { little_endian "$1" 60; }

# Whether the DLL $1 carries a signature: its fifth directory has a place.
is_signed() {
  local headers directories
  headers=$(headers_of "$1")
  # Behind the optional header's fixed part, which is longer for 64 bit (0x20b).
  directories=$((headers + 24 + 96))
  [ "$(od -A n -t x2 -j $((headers + 24)) -N 2 "$1" | tr -d ' ')" != 020b ] || directories=$((headers + 24 + 112))
  [ "$(little_endian "$1" $((directories + 4 * 8)))" != 0 ]
}

# Writes the signed DLL $1 without its signature to $2, which then is what was signed: signing fills a file
# up to a multiple of 8 bytes, and enters a checksum over that. Both are taken back as far as they are in
# $3, a DLL that was never signed and should be the same.
without_signature() {
  local signed=$1 file=$2 pattern=$3 size
  command -v osslsigncode > /dev/null || ensure_packages osslsigncode
  rm -f "$file"  # nothing is overwritten
  osslsigncode remove-signature -in "$signed" -out "$file" > /dev/null || die "$signed keeps its signature"
  size=$(stat -c %s "$pattern")
  if [ $(((size + 7) / 8 * 8)) = "$(stat -c %s "$file")" ] &&
     [ -z "$(tail -c +$((size + 1)) "$file" | tr -d '\0')" ]; then
    truncate -s "$size" "$file"
  fi
  dd if="$pattern" of="$file" bs=1 skip=$(($(headers_of "$pattern") + 88)) \
    seek=$(($(headers_of "$file") + 88)) count=4 conv=notrunc status=none
}

# Says in a word whether it will be signed.
signature_of() {
  if [ -n "${QORCRED_SIGNING_KEY:-}" ]; then echo signed; else echo unsigned; fi
}
