# Sourced by the scripts of this folder, never run by itself.
# shellcheck shell=bash

# The project's root; every script works from there, wherever it was called from.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root" || exit

# say TEXT...: a line about what happens next, told apart from what the tools print.
say() { printf '==> %s\n' "$*"; }

# die TEXT...: ends the script with a reason.
die() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# usage FILE: prints the comment at the head of a script, which is its usage.
usage() { sed -n '2,/^[^#]/{s/^# \{0,1\}//p}' "$1"; }

# build_preset PRESET [TARGET...]: configures where needed and builds, all of it without targets.
build_preset() {
    local preset=$1
    shift
    local launcher=()
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
        # Without these ccache keeps nothing that was compiled with precompiled headers.
        export CCACHE_SLOPPINESS=pch_defines,time_macros
    fi
    say "Configuring build/$preset"
    cmake --preset "$preset" "${launcher[@]}" >"$(log_file "configure-$preset")" 2>&1 ||
        { cat "$(log_file "configure-$preset")" >&2; die "could not configure build/$preset"; }
    say "Building build/$preset"
    cmake --build --preset "$preset" ${1+--target "$@"}
}

# log_file NAME: where a script keeps the output of one of its steps.
log_file() {
    mkdir -p build/log
    printf 'build/log/%s.log' "$1"
}

# How long to wait for what has to come, in seconds: far longer than it takes on the busiest of
# machines. Only what fails waits so long.
patience=60

# wait_until COMMAND...: polls until the command succeeds; fails when the patience is over.
wait_until() {
    local end=$((SECONDS + patience))
    until "$@"; do
        if ((SECONDS >= end)); then
            return 1
        fi
        sleep 0.1
    done
}

# cpp_files FOLDER...: the project's C++ files, new ones too, each ended by a null byte.
cpp_files() {
    local folder patterns=()
    for folder in "$@"; do
        patterns+=(":(glob)$folder/**/*.h" ":(glob)$folder/**/*.cpp")
    done
    git ls-files -z --cached --others --exclude-standard -- "${patterns[@]}" | existing
}

# existing: passes on those of the names on its input that are there.
existing() {
    local name
    while IFS= read -r -d '' name; do
        if [[ -f $name ]]; then
            printf '%s\0' "$name"
        fi
    done
}
