# shellcheck shell=bash
# What the project's shell scripts share. Source it after `set -euo pipefail`.

# shellcheck disable=SC2034 # for the scripts that source this
top=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/.." && pwd)
me=${0##*/}

say() { printf '%s: %s\n' "$me" "$*"; }
complain() { printf '%s: %s\n' "$me" "$*" >&2; }
die() {
	complain "$*"
	exit 1
}
have() { command -v "$1" >/dev/null 2>&1; }

# wait_until SECONDS COMMAND...: false when the command still fails after that time
wait_until() {
	local end=$((SECONDS + $1))
	shift
	until "$@"; do
		[ "$SECONDS" -lt "$end" ] || return 1
		sleep 0.02
	done
}

# is_running PID, for a child of this script: the number of one that has ended may be a stranger's
is_running() { [[ $'\n'$(jobs -pr)$'\n' = *$'\n'"$1"$'\n'* ]]; }
has_ended() { ! is_running "$1"; }

# end_process PID: ask a child to end, and insist when it does not
end_process() {
	is_running "$1" || return 0
	kill -TERM "$1" 2>/dev/null || true
	wait_until 10 has_ended "$1" || kill -KILL "$1" 2>/dev/null || true
}

exit_steps=()
# at_exit COMMAND...: run it when the script ends, by itself or by a signal; the last one first
at_exit() {
	exit_steps=("${*@Q}" "${exit_steps[@]}")
}

run_exit_steps() {
	local status=$? step
	trap - EXIT
	trap '' HUP INT TERM
	set +e
	for step in "${exit_steps[@]}"; do eval "$step"; done
	exit "$status"
}

trap run_exit_steps EXIT
# whatever the program in the foreground makes of the same signal
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
