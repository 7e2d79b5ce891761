#!/usr/bin/env bash
# The program as a user meets it: exit statuses, what goes where, bad inputs.
# Usage: app_cli_test.sh <rtcm2> <samples>
set -u
rtcm2=$1
sample=$2/demo.rtcm2
all=$2/all-types.rtcm2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

# expect STATUS WHAT COMMAND...: the command ends so and, unless WHAT is empty, says it on stderr.
expect() {
    local status=$1 what=$2
    shift 2
    timeout 60 "$@" > "$work/out" 2> "$work/err" < /dev/null
    local got=$?
    [ "$got" -eq "$status" ] || fail "status $got instead of $status: $*"
    [ -z "$what" ] || grep -qF -- "$what" "$work/err" || fail "stderr lacks '$what': $*"
    if [ "$status" -ne 0 ] && [ ! -s "$work/err" ]; then
        fail "ends with $status and says nothing: $*"
    fi
}

: > "$work/empty"
head -c 20000 /dev/zero | tr '\0' 'x' > "$work/letters"
head -c 100 "$sample" > "$work/short"

for command in list show stats export "convert --to hex"; do
    expect 0 "" "$rtcm2" $command "$sample"
    [ -s "$work/out" ] || fail "nothing on standard output: $command"
    expect 1 "no message" "$rtcm2" $command "$work/empty"
    expect 1 "no message" "$rtcm2" $command "$work/letters"
    expect 3 "Is a directory" "$rtcm2" $command "$work"
    expect 3 "No such file" "$rtcm2" $command "$work/missing" "$sample"
    [ -s "$work/out" ] || fail "the other input was not read: $command"
    expect 4 "No space left" "$rtcm2" $command -o /dev/full "$sample"
    expect 4 "No such file" "$rtcm2" $command -o "$work/no/such/place" "$sample"
    expect 2 "" "$rtcm2" $command --no-such-option "$sample"
    expect 2 "" "$rtcm2" $command --type 99 "$sample"
    expect 2 "" "$rtcm2" $command --where 'PRC <' "$sample"
done
expect 2 "no chosen kind of message has a field" "$rtcm2" list --fields PRCC "$sample"
expect 2 "" "$rtcm2"
expect 2 "" "$rtcm2" no-such-command
expect 0 "" "$rtcm2" --help

# All types but some: what is of an unknown one (14) stays.
{ "$rtcm2" convert --to hex "$all" && echo 663805000000; } > "$work/all"
"$rtcm2" convert --form hex --to hex --except 1,16 "$work/all" > "$work/rest"
grep -vE '^66(0[4-7]|4[0-3])' "$work/all" | cmp -s - "$work/rest" ||
    fail "--except leaves out other types than it says"

# Standard input, and what is cut off is told with its place.
"$rtcm2" list "$sample" > "$work/file"
"$rtcm2" list - < "$sample" > "$work/pipe"
cmp -s "$work/file" "$work/pipe" || fail "a file and standard input give different lists"
expect 0 "at byte" "$rtcm2" list "$work/short"
expect 0 "" "$rtcm2" list --quiet "$work/short"
[ -s "$work/err" ] && fail "--quiet is not quiet"
expect 5 "at byte" "$rtcm2" list --on-error stop "$2/damaged.rtcm2"
[ "$("$rtcm2" list --max 3 "$sample" 2> /dev/null | wc -l)" -eq 4 ] || fail "--max 3 gives not three"

# The locale of the user changes nothing.
for command in "show" "stats" "export --texts"; do
    for locale in C de_DE.UTF-8 hi_IN.UTF-8; do
        LC_ALL=$locale "$rtcm2" $command "$all" > "$work/$locale" 2> "$work/err"
        cmp -s "$work/C" "$work/$locale" || fail "other output in $locale: $command"
    done
done

# A reader that goes away ends the program quietly.
"$rtcm2" show "$all" 2> "$work/err" | head -n 1 > /dev/null
[ -s "$work/err" ] && fail "a closed pipe is complained about"

# A live input: messages are shown before it ends, and an interruption ends it cleanly.
mkfifo "$work/fifo"
"$rtcm2" list "$work/fifo" > "$work/live" 2> /dev/null &
reader=$!
exec 9> "$work/fifo"
cat "$sample" >&9
for _ in $(seq 100); do
    [ "$(wc -l < "$work/live")" -gt 2 ] && break
    sleep 0.1
done
[ "$(wc -l < "$work/live")" -gt 2 ] || fail "nothing is shown while the input is open"
kill -INT "$reader"
wait "$reader"
[ $? -eq 130 ] || fail "an interruption does not give 130"
exec 9>&-

"$rtcm2" completion bash | bash -n || fail "the bash completion is no bash"
grep -q convert <("$rtcm2" completion zsh) || fail "the zsh completion lacks a command"
"$rtcm2" manual > "$work/manual"
for option in --where --form --on-error --texts; do
    grep -qF -- "${option//-/\\-}" "$work/manual" || fail "the manual lacks $option"
done

[ "$failures" -eq 0 ] && echo "all is well"
exit $((failures > 0))
