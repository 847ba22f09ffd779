# setup.sh: sourced by run, test and bench. need_packages installs what is missing on a Debian 12; nothing else does.
# shellcheck shell=sh

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

    echo "installing with apt-get:$missing" >&2
    as_root="env"
    if [ "$(id -u)" != 0 ]; then
        as_root="sudo env"
    fi
    install_log="$(mktemp)"
    # shellcheck disable=SC2086
    if ! { $as_root apt-get update &&
        $as_root DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing; } >"$install_log" 2>&1; then
        tail -n 20 "$install_log" >&2
        echo "could not install:$missing" >&2
        rm -f "$install_log"
        return 1
    fi
    rm -f "$install_log"
}

# What building and running takes: for Linux, for its tests, for Windows. windres compiles resources for both.
need_native()
{
    need_packages g++=g++ cmake=cmake ninja=ninja-build x86_64-w64-mingw32-windres=binutils-mingw-w64-x86-64 "$@"
}

# The view parses its requests with Boost.Beast's headers.
need_view()
{
    need_native /usr/include/boost/beast/http/parser.hpp=libboost-dev "$@"
}

need_native_tests()
{
    need_view /usr/include/gtest/gtest.h=libgtest-dev /usr/src/googletest/CMakeLists.txt=googletest pkg-config=pkg-config \
        python3=python3 "$@"
}

need_windows()
{
    need_packages cmake=cmake ninja=ninja-build x86_64-w64-mingw32-g++-posix=g++-mingw-w64-x86-64-posix \
        x86_64-w64-mingw32-windres=binutils-mingw-w64-x86-64 wine=wine /usr/lib/wine/wine64=wine64 Xvfb=xvfb "$@"
}

# Wine has no font of its own: what texts measure is that of the fonts on the machine.
need_windows_tests()
{
    need_windows /usr/src/googletest/CMakeLists.txt=googletest pkg-config=pkg-config python3=python3 \
        /usr/share/fonts/truetype/dejavu/DejaVuSans.ttf=fonts-dejavu-core "$@"
}

# What packing takes beyond building: dpkg-shlibdeps and file find out what the libraries need.
need_packing()
{
    need_view dpkg-shlibdeps=dpkg-dev file=file doxygen=doxygen python3=python3 "$@"
}

# configure PRESET [ARGUMENT...]: prints only what went wrong.
configure()
{
    build_log="$(mktemp)"
    if ! cmake --preset "$@" >"$build_log" 2>&1; then
        cat "$build_log" >&2
        rm -f "$build_log"
        return 1
    fi
    rm -f "$build_log"
}

# build PRESET [TARGET...]: configures and builds. Tells how far it is, and prints the output of commands that fail.
build()
{
    build_preset="$1"
    shift
    configure "$build_preset" || return 1
    {
        NINJA_STATUS='@%f %t ' ninja -C "build/$build_preset" "$@" 2>&1 && echo '@built' || echo '@failed'
    } | show_progress
}

# show_progress: reads what ninja prints and tells it on the standard error output: one line that moves on a terminal, a line
# every ten seconds else. Of the commands only what failed is shown. Fails if the build did.
show_progress()
{
    failing=no
    result=1
    next=$(($(date +%s) + 10))
    clear=""
    [ ! -t 2 ] || clear="$(printf '\r\033[K')"
    while IFS= read -r line; do
        case "$line" in
        @built) result=0 ;;
        @failed) ;;
        @[0-9]*)
            failing=no
            line="${line#@}"
            line="building ${line%% *} of $(echo "$line" | cut -d ' ' -f 2)"
            if [ -n "$clear" ]; then
                printf '%s%s' "$clear" "$line" >&2
            elif [ "$(date +%s)" -ge "$next" ]; then
                echo "$line" >&2
                next=$(($(date +%s) + 10))
            fi
            ;;
        FAILED:* | ninja:\ error:*)
            failing=yes
            printf '%s%s\n' "$clear" "$line" >&2
            ;;
        *) [ $failing = no ] || printf '%s\n' "$line" >&2 ;;
        esac
    done
    printf '%s' "$clear" >&2
    return $result
}
