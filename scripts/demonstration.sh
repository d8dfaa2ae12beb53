# shellcheck shell=bash
# The program in use on a machine without a screen: signs in, says a line, hears one, and leaves
# pictures. Whether the line arrived is for the chatter at the other end to say.
: "${top:?source common.sh first}" "${window:=}" "${client_settings:=}"

said='Good evening, is the lighthouse lit tonight?'
answer='It is, I can see it from here. Welcome to the harbor!'

# demonstrate HOST CLIENT [ARGUMENT...]
demonstrate() {
	local host=$1 nick=Newcomer$((RANDOM % 90 + 10))
	shift
	scratch=$(mktemp -d)
	at_exit rm -rf -- "$scratch"
	pictures=$top/build/screenshots
	mkdir -p -- "$pictures"
	rm -f -- "$pictures"/*.png

	say "starting a virtual screen"
	start_display "$scratch"
	invite_chatter "$host" "$nick"
	open_client "$@"
	sign_in "$nick"
	talk "$nick"
	say "$nick and Marlow have heard each other; pictures are in $pictures"
}

invite_chatter() { # invite_chatter HOST NICK
	"$top/network/chatter.py" "$1" --nick Marlow --watch "$2" --expect "$said" --answer "$answer" \
		--seconds 180 >"$scratch/chatter.log" 2>&1 &
	chatter=$!
	at_exit end_process "$chatter"
	wait_until 20 chatter_reports ready ||
		die "no chat network answers on $1; start one with network/start DIR $1"
}

chatter_reports() { grep -qsx "$1" "$scratch/chatter.log"; }

# Nothing of the person who starts this is touched: the settings and stores are throw-away ones.
open_client() { # open_client CLIENT [ARGUMENT...]
	local folder settings=(QT_QPA_PLATFORM=xcb DBUS_SESSION_BUS_ADDRESS=disabled:)
	for folder in CONFIG_HOME DATA_HOME CACHE_HOME STATE_HOME RUNTIME_DIR; do
		mkdir -m 700 -- "$scratch/$folder"
		settings+=("XDG_$folder=$scratch/$folder")
	done
	[ -z "$client_settings" ] || cp -r -- "$client_settings/." "$scratch/CONFIG_HOME/"
	[ "$(id -u)" != 0 ] || settings+=(QTWEBENGINE_DISABLE_SANDBOX=1)
	env "${settings[@]}" "$@" >"$scratch/client.log" 2>&1 &
	client=$!
	at_exit end_process "$client"
	await 30 "the first window did not come up" window_of "$client"
	await 10 "the first window stayed empty" is_painted "$window"
	picture splash root
}

sign_in() { # sign_in NICK
	await 30 "the sign-in window did not come up" window_titled 'QuillHarbor Messenger - Sign In'
	await 10 "the sign-in window stayed empty" is_painted "$window"
	activate "$window"
	picture sign-in root
	say "signing in as $1"
	type_line "$1"
	await 60 "the chat window did not come up" window_titled 'QuillHarbor Messenger 1.0'
}

talk() { # talk NICK
	local chat=$window
	await 30 "$1 did not come into #Harbor" chatter_reports here
	await 10 "the chat window stayed empty" is_painted "$chat"
	activate "$chat"
	say "saying: $said"
	type_line "$said"
	await 30 "Marlow did not hear it" chatter_reports heard
	say "answer: $answer"
	await 30 "the answer did not reach the client" chatter_reports received
	wait_until 5 is_still "$chat" || true
	picture chat "$chat"
	picture desktop root
	wait "$chatter" || give_up "Marlow is not content: $(tail -n 1 -- "$scratch/chatter.log")"
}

activate() { # activate WINDOW
	xdotool windowactivate "$1" 2>/dev/null || true
	await 10 "the window could not be made active" is_active "$1"
}

picture() { pixels "$2" "$pictures/$1.png"; } # picture NAME WINDOW

# await SECONDS COMPLAINT COMMAND...: the client has to be alive all the while
await() {
	local seconds=$1 complaint=$2
	shift 2
	wait_until "$seconds" is_so_or_over "$@" || give_up "$complaint"
	is_running "$client" || give_up "the client ended: $(tail -n 1 -- "$scratch/client.log")"
}
is_so_or_over() { "$@" || has_ended "$client"; }

give_up() { # give_up COMPLAINT
	picture failed root || true
	cp -f -- "$scratch/client.log" "$scratch/chatter.log" "$pictures/" || true
	die "$1; see failed.png, client.log and chatter.log in $pictures"
}
