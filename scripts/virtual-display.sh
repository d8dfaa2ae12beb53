# shellcheck shell=bash
# A screen in memory with a window manager, and the eyes and hands of a person in front of it.

# start_display FOLDER [SIZE]: on a free display number; FOLDER takes what its programs say
start_display() {
	local folder=$1
	Xvfb -displayfd 3 -screen 0 "${2:-1280x900}x24" -dpi 96 -nolisten tcp -noreset \
		3>"$folder/display" >"$folder/xvfb.log" 2>&1 &
	at_exit end_process $!
	wait_until 20 test -s "$folder/display" ||
		die "no virtual display: $(tail -n 1 -- "$folder/xvfb.log")"
	DISPLAY=:$(<"$folder/display")
	export DISPLAY
	unset WAYLAND_DISPLAY XAUTHORITY
	openbox --sm-disable >"$folder/openbox.log" 2>&1 &
	at_exit end_process $!
	wait_until 20 has_window_manager ||
		die "openbox does not start: $(tail -n 1 -- "$folder/openbox.log")"
}

has_window_manager() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }

# The finders leave the window they found in $window.
window_of() { # window_of PID
	window=$(xdotool search --onlyvisible --pid "$1" 2>/dev/null | head -n 1) && [ -n "$window" ]
}
window_titled() { # window_titled TITLE
	window=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1) && [ -n "$window" ]
}

is_active() { [ "$(xdotool getactivewindow 2>/dev/null)" = "$1" ]; }

# pixels WINDOW: what it shows
pixels() { import -silent -window "$1" -depth 8 "${2:-rgb:-}" 2>/dev/null; }

# a window comes up empty and is painted a little later
is_painted() {
	local colours
	colours=$(pixels "$1" miff:- | identify -format %k - 2>/dev/null) && [ "${colours:-0}" -gt 4 ]
}

# is_still WINDOW: nothing in it has changed since the last time this was asked
is_still() {
	local before=${last_look:-}
	last_look=$(pixels "$1" | cksum)
	[ "$last_look" = "$before" ]
}

type_line() {
	xdotool type --delay 20 -- "$1"
	xdotool key Return
}
