# What the scripts share: where we are, how we speak, how we build.
# Sourced, not run.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

step() { printf '\n== %s\n' "$*"; }
stop() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# packages KIND... : installs what packages.txt lists for these kinds and the
# machine lacks. Without anything missing it says nothing and asks nobody.
packages() {
    local kind missing=() name
    for kind in "$@"; do
        while read -r name; do
            dpkg-query -W -f '${Status}' "$name" 2>/dev/null | grep -q 'ok installed' ||
                missing+=("$name")
        done < <(sed -n "s/^\([a-z0-9.+-]*\) *\[$kind\].*/\1/p" packages.txt)
    done
    [ ${#missing[@]} -eq 0 ] && return
    step "Installing ${missing[*]}"
    command -v apt-get >/dev/null || stop "missing: ${missing[*]}, and there is no apt-get to install them"
    local as_root=()
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || stop "missing: ${missing[*]}; run 'apt-get install ${missing[*]}' as root"
        as_root=(sudo)
    fi
    "${as_root[@]}" apt-get update -qq || stop "apt-get update failed"
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq --no-install-recommends \
        "${missing[@]}" >/dev/null || stop "apt-get could not install: ${missing[*]}"
}

# build PRESET [TARGET...]
build() {
    local preset=$1 targets=()
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset"
    cmake --build --preset "$preset" "${targets[@]}"
}

# suite PRESET: runs the tests of a build and tells how long they took.
suite() {
    ctest --preset "$1" --parallel "$(nproc)" --no-tests=error
}
