#!/usr/bin/env bash
# Runs the command-line host with its window over an image in an X server of
# its own, as a person at the desktop would, then either types a new text
# into the text field and clicks OK, or clicks Cancel. Each step waits for
# what it needs (the server, the window, the host's end), never for a time,
# so that a loaded machine only makes it slower.
#   x11_session.sh PLUMET INPUT OUTPUT ok TEXT
#   x11_session.sh PLUMET INPUT OUTPUT cancel
# Ends with the host's exit status; 3 when the server or the window never
# came.
set -u
plumet=$1 in=$2 out=$3 action=$4 text=${5:-}
dir=$(mktemp -d)
server='' pid='' finder=''
cleanup() {
    for p in $finder $pid $server; do kill "$p" 2>/dev/null; done
    rm -rf "$dir"
}
trap cleanup EXIT
trap 'exit 3' TERM INT

# The server takes the first free display itself and writes its number once
# it accepts connections: sessions side by side never race for a number.
mkfifo "$dir/display"
Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp 3>"$dir/display" 2>"$dir/server.log" &
server=$!
if ! read -r number <"$dir/display"; then
    echo "x11_session: the X server did not start" >&2
    cat "$dir/server.log" >&2
    exit 3
fi
export DISPLAY=:$number

"$plumet" "$in" "$out" &
pid=$!
# The window, or the host's end if it never shows one.
xdotool search --sync --onlyvisible --name "Lumerra 3D FlyWORD Plumet" >"$dir/window" &
finder=$!
wait -n -p first "$pid" "$finder"
if [ "$first" = "$pid" ]; then
    wait "$pid"
    echo "x11_session: the host ended before its window showed (status $?)" >&2
    exit 3
fi
finder=''
win=$(head -1 "$dir/window")
if [ -z "$win" ]; then
    echo "x11_session: no window was found" >&2
    exit 3
fi
eval "$(xdotool getwindowgeometry --shell "$win")" # X, Y, WIDTH, HEIGHT
xdotool windowfocus --sync "$win"
# The buttons stand in the lower left corner: OK last, Cancel above it.
button_x=$((X + 34))
if [ "$action" = ok ]; then
    xdotool key --clearmodifiers ctrl+a
    xdotool type --delay 30 "$text"
    xdotool key Return
    xdotool mousemove --sync "$button_x" $((Y + HEIGHT - 17)) click 1
else
    xdotool mousemove --sync "$button_x" $((Y + HEIGHT - 43)) click 1
fi
wait "$pid"
status=$?
pid=''
exit $status
