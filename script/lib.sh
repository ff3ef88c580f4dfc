# Shared by the scripts of this folder; sourced, not run.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '==> %s\n' "$*"; }
fail() { printf 'error: %s\n' "$*" >&2; exit 1; }

# configure_and_build PRESET [TARGET...]: configures once, then builds what changed.
configure_and_build() {
  local preset=$1
  shift
  local options=()
  # CI and newcomers build as it stands; a compiler cache is used only when one is there.
  if command -v ccache >/dev/null 2>&1; then options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
  mkdir -p "build/$preset"
  local log="build/$preset/configure.log"
  if ! cmake --preset "$preset" "${options[@]}" >"$log" 2>&1; then
    cat "$log" >&2
    fail "configuring the preset '$preset' failed"
  fi
  cmake --build --preset "$preset" ${1:+--target "$@"}
}
