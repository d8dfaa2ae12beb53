# shellcheck shell=bash
# The processes of one network, remembered in DIR by `start` for `stop`. A number alone may
# belong to a stranger by the time it is read, the number and the time it began cannot.

# began_at PID: when that process began, in ticks since the machine did
began_at() {
	local stat
	stat=$(cat -- "/proc/$1/stat" 2>/dev/null) || return 1
	# the name, in parentheses, may itself hold blanks and parentheses
	read -ra stat <<<"${stat##*) }"
	[ "${stat[0]}" != Z ] && printf '%s\n' "${stat[19]}"
}

remember() { # remember DIR NAME PID
	printf '%s %s\n' "$3" "$(began_at "$3")" >"$1/$2.pid"
}

# process_of DIR NAME: prints the number of that process if it runs
process_of() {
	local pid began
	read -r pid began 2>/dev/null <"$1/$2.pid" || return 1
	[ "$(began_at "$pid")" = "$began" ] && printf '%s\n' "$pid"
}

is_up() { process_of "$1" "$2" >/dev/null; }
is_down() { ! is_up "$1" "$2"; }
