#!/bin/sh
# screenshot.sh [FILE.png]: takes a picture of the monitor's window, the Windows build under Wine, with its list filled; without a
# file docs/monitor.png.
set -eu
here="$(cd "$(dirname "$0")/../.." && pwd)"
picture="${1-$here/docs/monitor.png}"
. "$here/tools/setup.sh"
need_windows import=imagemagick
cd "$here"
build run-windows monitor

# A display of its own, where no other window covers this one.
work="$(mktemp -d /tmp/kelgen.XXXX)"
xvfb=""
session=""
finish()
{
    [ -z "$session" ] || kill "$session" 2>/dev/null || true
    [ -z "$xvfb" ] || kill "$xvfb" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT
Xvfb -displayfd 3 -screen 0 790x352x24 -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
xvfb=$!
for _ in $(seq 100); do
    [ ! -s "$work/display" ] || break
    sleep 0.1
done
KELGEN_DISPLAY=":$(cat "$work/display")"
export KELGEN_DISPLAY

mkdir "$work/project"
cp examples/monitor/Monitor*.* examples/monitor/Folder*.* examples/monitor/monitor.ini "$work/project"
printf '[Monitor]\nFolder=%s\nLanguage=English\nLeft=10\nTop=10\nWidth=770\nHeight=332\n' "Z:$work/project" >"$work/picture.ini"
# Through its desktop Wine draws the windows' frames.
cmake/wine-run.sh explorer /desktop=kelgen-picture,790x352 "Z:$here/build/run-windows/bin/monitor.exe" "Z:$work/picture.ini" \
    >"$work/output" 2>&1 &
session=$!

shoot()
{
    DISPLAY="$KELGEN_DISPLAY" import -silent -window root -depth 8 "$1"
}

# settled: whether two pictures in a row are equal and show more than an empty desktop.
settled()
{
    shoot "$work/one.png"
    sleep 0.5
    shoot "$work/two.png"
    [ "$(identify -format '%k' "$work/two.png")" -gt 20 ] && cmp -s "$work/one.png" "$work/two.png"
}

wait_settled()
{
    for _ in $(seq 60); do
        ! settled || return 0
        sleep 0.5
    done
    echo "screenshot.sh: no window came up" >&2
    cat "$work/output" >&2
    return 1
}

wait_settled
echo "; a line more" >>"$work/project/monitor.ini"
echo "new" >"$work/project/Notes.txt"
rm "$work/project/Monitor.ico"
sleep 1
wait_settled
convert "$work/two.png" -strip +dither -colors 64 "$picture"
echo "$picture: $(identify -format '%wx%h, %k colours' "$picture"), $(wc -c <"$picture") bytes"
