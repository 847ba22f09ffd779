# setup.sh: sourced by run, test and bench. need_packages installs what is missing on a Debian 12; nothing else does.

# need_packages COMMAND-OR-FILE=PACKAGE...: installs the packages whose command or file is missing, after saying so.
need_packages()
{
    missing=""
    for pair in "$@"; do
        probe="${pair%%=*}"
        package="${pair#*=}"
        case "$probe" in
        /*) [ -e "$probe" ] || missing="$missing $package" ;;
        *) command -v "$probe" >/dev/null 2>&1 || missing="$missing $package" ;;
        esac
    done
    [ -n "$missing" ] || return 0

    echo "Installing with apt-get:$missing"
    as_root=""
    if [ "$(id -u)" != 0 ]; then
        as_root="sudo"
    fi
    export DEBIAN_FRONTEND=noninteractive
    log="$(mktemp)"
    # shellcheck disable=SC2086
    if ! { $as_root apt-get update && $as_root apt-get install -y --no-install-recommends $missing; } >"$log" 2>&1; then
        tail -n 20 "$log" >&2
        echo "Could not install:$missing" >&2
        return 1
    fi
    rm -f "$log"
}

# need_native, need_windows: what building and running for that target takes.
need_native()
{
    need_packages g++=g++ cmake=cmake ninja=ninja-build ccache=ccache x86_64-w64-mingw32-windres=binutils-mingw-w64-x86-64 "$@"
}

need_windows()
{
    need_packages cmake=cmake ninja=ninja-build ccache=ccache x86_64-w64-mingw32-g++-posix=g++-mingw-w64-x86-64-posix \
        x86_64-w64-mingw32-windres=binutils-mingw-w64-x86-64 wine=wine /usr/lib/wine/wine64=wine64 Xvfb=xvfb "$@"
}

# build PRESET [TARGET...]: configures once and builds; prints only what went wrong.
build()
{
    preset="$1"
    shift
    build_log="$(mktemp)"
    if ! cmake --preset "$preset" >"$build_log" 2>&1 ||
        ! cmake --build --preset "$preset" ${1:+--target "$@"} >"$build_log" 2>&1; then
        cat "$build_log" >&2
        rm -f "$build_log"
        return 1
    fi
    rm -f "$build_log"
}
