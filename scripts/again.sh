# For what comes over the network; other scripts source it.

# again COMMAND...: a mirror that fails, or whose lists change while they are read, is asked again.
again() {
  for pause in 5 20 60; do
    "$@" && return
    echo "trying again in $pause seconds: $*" >&2
    sleep "$pause"
  done
  "$@"
}
