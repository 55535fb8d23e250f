#!/usr/bin/env bash
# How scripts/in-root makes a root, runs commands there and ends, with a root of a few programs and
# a stub for what makes real ones.
# Usage: in-root.sh FOLDER-OF-THE-PROJECT
set -euo pipefail
project=$1
work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT
if ! unshare --mount --pid --net --fork true 2>/dev/null; then
    echo "not tested: roots (missing: the right to make namespaces)"
    exit
fi

# A blank in its name, as a user's folder may have.
tree="$work/a tree"
mkdir --parents "$tree/scripts" "$work/path"
cp -r "$project/scripts/lib" "$project/scripts/in-root" "$tree/scripts/"
printf '#!/bin/sh\necho installing\n' >"$tree/scripts/install-dependencies"
chmod +x "$tree/scripts/install-dependencies"
export QUILLMENDER_ROOTS="$work/some roots"

# Makes a root of a shell and little more, after it has waited to be let.
cat >"$work/path/debootstrap" <<STUB
#!/usr/bin/env bash
set -euo pipefail
echo "making \$*"
root=\$3
# The real one cannot handle them.
[[ \$root != *' '* ]]
mkdir --parents "\$root"/{bin,proc,dev,tmp,root,etc/apt/apt.conf.d,etc/dpkg/dpkg.cfg.d}
mount -t tmpfs mounted "\$root/proc"
touch "$work/began"
while [ ! -e "$work/let" ]; do sleep 0.05; done
for program in sh sleep cat env touch; do
    cp "\$(command -v \$program)" "\$root/bin/"
    ldd "\$(command -v \$program)" | grep --only-matching '/[^ ]*' |
        while read -r library; do
            mkdir --parents "\$root\${library%/*}"
            cp --dereference "\$library" "\$root\$library"
        done
done
umount "\$root/proc"
STUB
chmod +x "$work/path/debootstrap"
export PATH="$work/path:$PATH"

failures=0
fail() {
    echo "$1" >&2
    failures=$((failures + 1))
}
# until_so DESCRIPTION command...
until_so() {
    local what=$1 tries
    shift
    for ((tries = 0; tries < 400; tries++)); do
        "$@" && return
        sleep 0.05
    done
    fail "not so: $what"
}
nothing_runs() {
    ! pgrep --full "$work/" >/dev/null
}
nothing_is_mounted() {
    ! grep --quiet "^mounted " /proc/mounts
}
in_root=$tree/scripts/in-root

for signal in TERM INT KILL; do
    rm -f "$work/began"
    env --default-signal=INT "$in_root" trixie -- true >/dev/null 2>&1 &
    maker=$!
    until_so "the root is being made" test -e "$work/began"
    kill -s $signal "$maker"
    wait "$maker" 2>/dev/null && fail "the command is run after SIG$signal"
    until_so "nothing makes the root after SIG$signal" nothing_runs
    nothing_is_mounted || fail "a mount is left after SIG$signal"
done
touch "$work/let"

# shellcheck disable=SC2016 # These are the inner shell's.
said=$("$in_root" trixie -- sh -c 'cat; echo "$1|$2"; [ -d scripts ]' sh 'one two' '' <<<input 2>/dev/null) ||
    fail "the command fails"
[ "$said" = $'input\none two|' ] || fail "the command said: $said"
status=0
"$in_root" trixie -- sh -c 'exit 7' 2>/dev/null || status=$?
[ "$status" = 7 ] || fail "its status is $status"
SECRET=hidden "$in_root" trixie -- cat /proc/1/environ 2>/dev/null | grep --quiet SECRET &&
    fail "a variable of this machine is there"

# start_waiting: a command inside that tells of the signals that it gets, and does not end.
start_waiting() {
    rm -rf "$tree/build/roots/trixie"
    # shellcheck disable=SC2016 # These are the inner shell's.
    env --default-signal=INT "$in_root" trixie -- sh -c '
        trap "echo TERM >build/got; exit 5" TERM
        trap "echo INT >build/got; exit 6" INT
        touch build/started
        while true; do sleep 0.05; done' >/dev/null 2>&1 &
    runner=$!
    until_so "the command runs" test -e "$tree/build/roots/trixie/started"
}
for signal in TERM INT; do
    start_waiting
    kill -s $signal "$runner"
    status=0
    wait "$runner" || status=$?
    [ "$(cat "$tree/build/roots/trixie/got")" = $signal ] || fail "SIG$signal is not passed on"
    [[ $status == [56] ]] || fail "after SIG$signal the status is $status"
done
# A terminal's reaches everybody at once, and nobody twice. What would be passed on comes before TERM.
cat >"$tree/count" <<'COMMAND'
trap 'echo INT >>build/got' INT
trap 'exit 5' TERM
: >build/got
touch build/started
while true; do sleep 0.05; done
COMMAND
rm -rf "$tree/build/roots/trixie"
# shellcheck disable=SC2016 # These are the inner shell's.
presses=5
said_by() {
    [ "$(wc -l <"$tree/build/roots/trixie/got")" -ge "$1" ]
}
{
    until_so "the command runs" test -e "$tree/build/roots/trixie/started"
    for ((press = 1; press <= presses; press++)); do
        printf '\003'
        until_so "it gets the keyboard's signal" said_by $press
    done
    kill -s TERM "$(cat "$work/runner")"
} | RUNNER="$work/runner" IN_ROOT="$in_root" env --default-signal=INT script --quiet --command \
    'echo $$ >"$RUNNER"; exec "$IN_ROOT" trixie -- sh count' /dev/null >/dev/null 2>&1
[ "$(wc -l <"$tree/build/roots/trixie/got")" = $presses ] ||
    fail "the keyboard's signal comes more than once"

start_waiting
kill -s KILL "$runner"
wait "$runner" 2>/dev/null || true
until_so "nothing runs after SIGKILL" nothing_runs

# One that cannot be made leaves nothing, and no word among what the command says.
printf '#!/bin/sh\nexit 1\n' >"$work/path/debootstrap"
said=$("$in_root" sid -- true 2>/dev/null) && fail "a root that cannot be made is there"
[ -z "$said" ] || fail "it said: $said"
[ ! -e "$QUILLMENDER_ROOTS/sid.new" ] || fail "half a root is left"
touch --date '8 days ago' "$QUILLMENDER_ROOTS/trixie/.made"
"$in_root" trixie -- true 2>/dev/null && fail "an old root counts for a new one"
[ -e "$QUILLMENDER_ROOTS/trixie/bin/sh" ] || fail "the old root is lost"
[ "$failures" = 0 ]
