# What the tests of both packages share. They begin with SOURCE and BUILD, and with a folder that is
# empty at first and goes at the end.
set -euo pipefail
export LC_ALL=C.UTF-8
source=$1 build=$2
failures=0
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# quietly COMMAND...: what it prints is shown if it fails, and then the test ends.
quietly() {
    "$@" >"$work/log" 2>&1 || { cat "$work/log" && exit 1; }
}

# expect STATUS OUTPUT COMMAND...: OUTPUT, with the errors behind it, is a pattern.
expect() {
    local status=0 output
    "${@:3}" >"$work/output" 2>&1 || status=$?
    output=$(tr -d '\r' <"$work/output")
    # shellcheck disable=SC2053
    if [ $status != "$1" ] || [[ $output != $2 ]]; then
        printf '%s\n  wanted %s: %s\n  got %s: %s\n' "${*:3}" "$1" "$2" "$status" "$output"
        failures=$((failures + 1))
    fi
}

make_package() {
    quietly cpack --config "$build/CPackConfig.cmake" -B "$work/made"
}

# no_traces FOLDER: nothing that is installed tells where it was built.
no_traces() {
    expect 1 '' grep -rlF "$source" "$1"
}
