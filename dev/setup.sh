# Sourced by ./run and ./test: installs the packages that are missing, and says how long each step takes.

# Prints the packages of a list that are not installed.
missing_packages() {
    local name
    grep -hv '^#' "$@" | while read -r name; do
        [ -z "$name" ] || dpkg-query -W -f '${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || echo "$name"
    done
}

install_packages() {
    if ! command -v apt-get >/dev/null; then
        echo "No apt-get here: please install what dev/packages.txt lists, under your system's names." >&2
        return 0
    fi
    local missing as_root=
    missing=$(missing_packages "$@")
    [ -n "$missing" ] || return 0
    [ "$(id -u)" -eq 0 ] || as_root=sudo
    echo "Installing:" $missing
    export DEBIAN_FRONTEND=noninteractive
    $as_root apt-get update -q >/dev/null
    # shellcheck disable=SC2086  # a list of names
    $as_root apt-get install -q -y --no-install-recommends $missing >/dev/null
}

# step NAME COMMAND...: runs a command, says how long it took, and ends the script when it fails.
step() {
    local name=$1 begin=$SECONDS
    shift
    if "$@"; then
        echo "== $name: $((SECONDS - begin)) s"
    else
        local status=$?
        echo "== $name failed with status $status after $((SECONDS - begin)) s" >&2
        exit "$status"
    fi
}

# build PRESET [TARGET...]: configures when needed and builds.
build() {
    local preset=$1
    shift
    [ -f "build/$preset/build.ninja" ] || cmake --preset "$preset" >"$(log_of "configure-$preset")" || {
        cat "$(log_of "configure-$preset")"
        return 1
    }
    local targets=()
    [ $# -eq 0 ] || targets=(--target "$@")
    cmake --build "build/$preset" "${targets[@]}" -- --quiet
}

log_of() {
    mkdir -p build/logs
    echo "build/logs/$1.txt"
}
