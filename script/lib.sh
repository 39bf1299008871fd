# shellcheck shell=bash
# Functions that all scripts share; each script sources this file first. A script announces each step by `step`. Its last
# line says what happened: the script leaves that in `happened`, and a failure names the step and a remedy.
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
self=$(realpath --relative-to="$root" "$0")
step=starting
advice="see $self --help"
happened="done"
cd "$root"

# step WHAT ADVICE: announces the next step, and keeps the remedy in case it fails.
step() {
  step=$1
  advice=$2
  printf '== %s\n' "$step"
}

# answer_help ARGUMENT...: prints the comment at the head of the script and exits, if the first argument asks for it.
answer_help() {
  if [[ ${1-} == --help || ${1-} == -h ]]; then
    trap - EXIT
    sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$self"
    exit 0
  fi
}

# fail WHAT ADVICE: exits with status 1 and one line that names the failed step and a remedy.
fail() {
  step=$1
  advice=$2
  exit 1
}

report_outcome() {
  local status=$?
  if [[ $status -eq 0 ]]; then
    printf '%s: %s\n' "$self" "$happened"
  else
    printf '%s: failed while %s\nhint: %s\n' "$self" "$step" "$advice" >&2
  fi
}
trap report_outcome EXIT

# bootstrap ARGUMENT...: installs missing packages.
bootstrap() {
  step "looking for missing packages" "follow the message of script/bootstrap above"
  script/bootstrap "$@"
}

# configure PRESET ARGUMENT...: configures the build of a preset, with further arguments for cmake.
configure() {
  local preset=$1
  shift
  step "configuring the $preset build" "the message of cmake above names what is missing"
  cmake --preset "$preset" --log-level=NOTICE "$@"
}

# build PRESET TARGET...: builds the named targets of a preset, or everything.
build() {
  local preset=$1
  shift
  step "building ${*:-everything} in build/$preset" "fix the first error above and run the script again"
  if [[ $# -gt 0 ]]; then set -- --target "$@"; fi
  cmake --build --preset "$preset" "$@"
}
