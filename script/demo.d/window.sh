# Sourced: the sample host under a display, worked with the keyboard and the mouse as a chemist would, and pictures of it.
# Needs $vrnhost, the built program, $out, a folder, and the function `fail`. Coordinates are those of the window in its first size.

# Whether there is a display of the user's to show it on. On Wayland the pictures would stay black, and keys go their own way.
display_is_there() {
    [ -z "${hidden-}" ] && [ -n "${DISPLAY-}" ] && [ -z "${WAYLAND_DISPLAY-}" ] && [ "${XDG_SESSION_TYPE-}" != wayland ] &&
        xdotool getdisplaygeometry >/dev/null 2>&1
}

# on_display COMMAND...: runs it on the user's display, or on one of its own that nobody sees when there is none, or with $hidden set.
on_display() {
    if display_is_there; then
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
            program=$(xdotool getwindowpid "$window")
            eval "$(xdotool getwindowgeometry --shell "$window" | sed 's/^/window_/')"
            settle
            return
        fi
        kill -0 "$host" 2>/dev/null || fail "the sample host ended: $(cat "$out/host.log")"
        sleep 0.1
    done
    fail "the sample host did not open its window"
}

# close_host [ANSWER]: File, Exit. (Alt+F4 may be the window manager's own key, for a window of another program.) ANSWER is the key for
# the question about unsaved changes.
close_host() {
    local tenths
    keys alt+f x
    for ((tenths = 0; tenths < 300; tenths++)); do
        kill -0 "$host" 2>/dev/null || break
        if [ -n "${1-}" ] && xdotool search --onlyvisible --name '^Method Host$' >/dev/null 2>&1; then
            keys "$1"
        fi
        sleep 0.1
    done
    ! kill -0 "$host" 2>/dev/null || fail "the sample host does not close"
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

# What is typed goes to whoever has the keyboard, and that is to be nobody else.
require_keyboard() {
    [ "$(xdotool getwindowfocus getwindowpid 2>/dev/null)" = "$program" ] || fail "another program's window has the keyboard"
}
keys() {
    require_keyboard
    xdotool key --delay 40 "$@"
    settle
}
write() {
    require_keyboard
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
# expect_title TITLE REASON: waits for it; a busy machine may take a while.
expect_title() {
    local tenths
    for ((tenths = 0; tenths < 150; tenths++)); do
        [ "$(title_of_host)" != "$1" ] || return 0
        sleep 0.1
    done
    fail "$2"
}
