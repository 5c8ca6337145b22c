#!/usr/bin/env bash
# Runs inside an X server, as a person at the desktop would: starts the
# command-line host with its window over an image, then either types a new
# text into the text field and clicks OK, or clicks Cancel.
#   x11_session.sh PLUMET INPUT OUTPUT ok TEXT
#   x11_session.sh PLUMET INPUT OUTPUT cancel
set -u
plumet=$1 in=$2 out=$3 action=$4 text=${5:-}
"$plumet" "$in" "$out" &
pid=$!
win=$(xdotool search --sync --onlyvisible --name "Lumerra 3D FlyWORD Plumet" | head -1)
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
