#!/bin/sh
# picture.sh [FILE.svg]: takes a picture of the monitor's windows as the view shows them, with the settings dialog open; without a file
# docs/monitor-view.svg.
set -eu
here="$(cd "$(dirname "$0")/../.." && pwd)"
picture="${1-$here/docs/monitor-view.svg}"
. "$here/tools/setup.sh"
need_view curl=curl
cd "$here"
build run monitor kelgen_view

# The path is in the picture, which is to be the same each time.
work=/tmp/kelgen-picture
mkdir -m 700 "$work"
monitor=""
finish()
{
    [ -z "$monitor" ] || kill -9 "$monitor" 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

# await TEXT FILE: until the file has the text.
await()
{
    for _ in $(seq 200); do
        ! grep -q "$1" "$2" 2>/dev/null || return 0
        sleep 0.05
    done
    echo "picture.sh: no $1" >&2
    return 1
}

mkdir "$work/project" "$work/home"
cp examples/monitor/Monitor*.* examples/monitor/Folder*.* examples/monitor/monitor.ini "$work/project"
touch -d '2026-11-22 12:00:00' "$work/project"/*
printf '[Monitor]\nFolder=%s\nLanguage=English\nLeft=40\nTop=40\nWidth=900\nHeight=560\n' "$work/project" >"$work/picture.ini"
KELGEN_HOME="$work/home" KELGEN_VIEW=0 KELGEN_SNAPSHOT="$work/picture.svg" build/run/bin/monitor "Z:$work/picture.ini" \
    >"$work/output" 2>&1 &
monitor=$!
await 'scanned 100' "$work/output"
url="$(sed -n 's/^view: //p' "$work/output")"
base="${url%%/\?*}"
curl -s -o "$work/page" -c "$work/cookies" "$url"
# The settings, by Alt, F, S.
printf 'press 164\npress 70\nrelease 70\nrelease 164\n' >"$work/open"
printf 'press 83\nrelease 83\n' >"$work/choose"
for keys in open choose; do
    curl -s -b "$work/cookies" -H "Origin: $base" --data-binary "@$work/$keys" "$base/input"
    sleep 0.3
done
kill -USR1 "$monitor"
await '</svg>' "$work/picture.svg"
await 'role="dialog"' "$work/picture.svg"
cp "$work/picture.svg" "$picture"
echo "$picture: $(wc -c <"$picture") bytes"
