# Sourced by the tools that deliver for Windows: signatures, where somebody has a key.

# Signs the file $1 in place when QORCRED_SIGNING_KEY names a file with key and certificate (PKCS#12). Its
# password is in the file that QORCRED_SIGNING_PASSWORD names; without that it has none.
sign() {
  local file=$1 password=()
  [ -n "${QORCRED_SIGNING_KEY:-}" ] || return 0
  [ -r "$QORCRED_SIGNING_KEY" ] || die "The key $QORCRED_SIGNING_KEY cannot be read"
  command -v osslsigncode > /dev/null || ensure_packages osslsigncode
  if [ -n "${QORCRED_SIGNING_PASSWORD:-}" ]; then password=(-readpass "$QORCRED_SIGNING_PASSWORD"); fi
  osslsigncode sign -pkcs12 "$QORCRED_SIGNING_KEY" "${password[@]}" -h sha256 -n "qorCred controllers" \
    -in "$file" -out "$file.signed" > "$file.signing.log" 2>&1 || {
    tail -n 5 "$file.signing.log" >&2
    die "$file was not signed"
  }
  rm -f "$file.signing.log"
  mv "$file.signed" "$file"
}

# Says in a word whether it will be signed.
signature_of() {
  if [ -n "${QORCRED_SIGNING_KEY:-}" ]; then echo signed; else echo unsigned; fi
}
