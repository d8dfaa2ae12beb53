# shellcheck shell=bash
# Configuring and building, for the scripts that need the program or its tests.
: "${top:?source common.sh first}"

# build PRESET [OPTION...]: quietly; what was said is in build/PRESET.log, its end is shown when
# it fails. OPTIONs go to the build.
build() {
	local preset=$1 log=$top/build/$1.log
	shift
	mkdir -p -- "$top/build"
	say "building $preset (the first time takes some minutes; log: build/$preset.log)"
	in_top cmake --preset "$preset" >"$log" 2>&1 || build_failed "configuring" "$log"
	in_top cmake --build --preset "$preset" "$@" >>"$log" 2>&1 || build_failed "building" "$log"
}

in_top() { (cd -- "$top" && exec "$@"); }

build_failed() { # build_failed WHAT LOG
	tail -n 40 -- "$2" >&2
	die "$1 failed: mend what is shown above and start again (all of it: $2)"
}
