# Sourced by every script here: strict bash, work from the top folder, say what is done.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

jobs=$(nproc)

say() { printf '\n== %s\n' "$*"; }

# Shows a command, then runs it.
run() {
  printf '+ %s\n' "$*"
  "$@"
}

fail() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# The headers that cmake/internal-headers.txt names, one a line.
internal_headers() { grep '^Oru/' cmake/internal-headers.txt | xargs -I{} find {} -name '*.h'; }

# The headers that are installed, one a line: those that git knows or would take, but for the internal ones.
public_headers() {
  git ls-files --cached --others --exclude-standard 'Oru/*.h' | grep -vxFf <(internal_headers)
}

# Prints the comment at the head of the calling script as its help text.
usage() { sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$0"; }

# configure PRESET [CMAKE ARGUMENT...]: with ccache in front of the compiler where it is installed.
configure() {
  local preset=$1
  shift
  if command -v ccache >/dev/null; then
    set -- -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@"
  fi
  run cmake --preset "$preset" "$@"
}
