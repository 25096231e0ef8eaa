# arguments LEAST MOST ARGUMENT...: for --help prints the comment at the head of the script; refuses options, and another number of
# arguments. Options that a script has it takes before.
arguments() {
  least=$1 most=$2
  shift 2
  for argument in "$@"; do
    case "$argument" in
      -h | --help)
        usage
        exit 0
        ;;
      -*)
        printf '%s: no option %s\n' "${0##*/}" "$argument" >&2
        exit 2
        ;;
    esac
  done
  if [ $# -lt "$least" ] || [ $# -gt "$most" ]; then
    usage >&2
    exit 2
  fi
}

usage() { sed -n -e '1d' -e '/^#/!q' -e 's/^# \{0,1\}//p' "$0"; }
