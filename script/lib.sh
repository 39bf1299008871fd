# shellcheck shell=bash
# What the scripts share; each sources it first. A script says what it is doing by step, and its last line, whether it
# succeeds or fails, says what happened: the script leaves it in `happened`.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
self=$(realpath --relative-to="$root" "$0")
step=starting
advice="see $self --help"
happened="all done"
cd "$root"

# step WHAT ADVICE: tells what is done next, and keeps what to do should it fail.
step() {
  step=$1
  advice=$2
  printf '== %s\n' "$step"
}

# Prints the comment at the head of the script and ends, when that is asked for.
answer_help() {
  if [[ ${1-} == --help || ${1-} == -h ]]; then
    trap - EXIT
    sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$self"
    exit 0
  fi
}

# Ends the script with one line that says why it cannot go on, and what to do.
give_up() {
  step=$1
  advice=$2
  exit 1
}

say_what_happened() {
  local status=$?
  if [[ $status -eq 0 ]]; then
    printf '%s: %s\n' "$self" "$happened"
  else
    printf '%s: failed while %s: %s\n' "$self" "$step" "$advice" >&2
  fi
}
trap say_what_happened EXIT

# bootstrap ARGUMENT...: installs what is missing.
bootstrap() {
  step "looking for packages that are missing" "do what script/bootstrap says above"
  script/bootstrap "$@"
}

# configure PRESET ARGUMENT...: prepares the build of a preset, with further arguments for cmake.
configure() {
  local preset=$1
  shift
  step "configuring the $preset build" "the message of cmake above says what it misses"
  cmake --preset "$preset" --log-level=NOTICE "$@"
}

# build PRESET TARGET...: builds the named targets of a preset, or everything.
build() {
  local preset=$1
  shift
  step "building ${*:-everything} in build/$preset" "mend what the first error above names and start again"
  if [[ $# -gt 0 ]]; then set -- --target "$@"; fi
  cmake --build --preset "$preset" "$@"
}
