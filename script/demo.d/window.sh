# Sourced: the sample host under a display, worked with the keyboard and the mouse as a chemist would, and pictures of it.
# Needs $vrnhost, the built program, $out, a folder, and the function `fail`. Coordinates are those of the window in its first size.

# on_display COMMAND...: runs it on the user's display, or on one of its own that nobody sees when there is none, or with $hidden set.
on_display() {
    if [ -z "${hidden-}" ] && [ -n "${DISPLAY-}" ] && xdotool getdisplaygeometry >/dev/null 2>&1; then
        "$@"
    else
        xvfb-run -a -s "-screen 0 1280x960x24" "$@"
    fi
}

# open_host SET METHOD: starts the program and waits until its window shows the method.
open_host() {
    script/wine "$vrnhost" --set "$1" "$2" >"$out/host.log" 2>&1 &
    host=$!
    local title="^${2##*/} - Method Host\$" tenths
    window=
    for ((tenths = 0; tenths < 600; tenths++)); do
        window=$(xdotool search --onlyvisible --name "$title" 2>/dev/null | head -n 1) || true
        if [ -n "$window" ]; then
            xdotool windowraise "$window" windowfocus "$window"
            eval "$(xdotool getwindowgeometry --shell "$window" | sed 's/^/window_/')"
            settle
            return
        fi
        kill -0 "$host" 2>/dev/null || fail "the sample host ended: $(cat "$out/host.log")"
        sleep 0.1
    done
    fail "the sample host did not open its window"
}

# close_host: Alt+F4, and what the program says of it.
close_host() {
    xdotool key alt+F4
    wait "$host" || fail "the sample host ended with an error: $(cat "$out/host.log")"
}

# look FILE [WxH+X+Y]: a picture of the window as it is on the screen, with what is open above it, or of a part of it.
look() {
    local place=${2-${window_WIDTH}x${window_HEIGHT}+0+0}
    local size=${place%%+*} left top
    IFS=+ read -r _ left top <<<"$place"
    import -silent -window root -crop "$size+$((window_X + left))+$((window_Y + top))" +repage "$1"
}

# Until the window stands still: what was typed has been dealt with. (A caret may blink between two looks, hence the rounds.)
settle() {
    local before='' now rounds
    for ((rounds = 0; rounds < 40; rounds++)); do
        sleep 0.15
        now=$(look rgb:- | cksum)
        [ "$now" != "$before" ] || return 0
        before=$now
    done
}

keys() {
    xdotool key --delay 40 "$@"
    settle
}
write() {
    xdotool type --delay 25 "$1"
    settle
}
# point X Y: the mouse goes there. press X Y: and its left button is pressed.
point() {
    xdotool mousemove --window "$window" "$1" "$2"
    sleep 0.2
    settle
}
press() {
    xdotool mousemove --window "$window" "$1" "$2" click 1
    settle
}
title_of_host() { xdotool getwindowname "$window"; }
