#!/usr/bin/env bash
# The program as a user meets it: exit statuses, what goes where, files, pipes, signals.
# Usage: app_cli_test.sh <rtcm2> <samples>
set -u
rtcm2=$1
sample=$2/demo.rtcm2
all=$2/all-types.rtcm2
damaged=$2/damaged.rtcm2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}

# ends STATUS MESSAGE WHAT: the last command did so and, unless the message is empty, said it on stderr.
ends() {
    local got=$?
    [ "$got" -eq "$1" ] || fail "status $got instead of $1: $3"
    [ -z "$2" ] || grep -qF -- "$2" err || fail "stderr lacks '$2': $3"
    [ "$1" -eq 0 ] || [ "$1" -gt 128 ] || [ -s err ] || fail "says nothing: $3"
}

# expect STATUS MESSAGE ARGUMENTS...
expect() {
    timeout 60 "$rtcm2" "${@:3}" > out 2> err < /dev/null
    ends "$1" "$2" "${*:3}"
}

# keeps WHEN: the old file is whole, and no unfinished one lies beside it.
keeps() {
    [ "$(cat old)$(find . -name '.rtcm2-*')" = old ] || fail "the old file is lost or another one left $1"
}

waitFor() {
    for _ in $(seq 100); do eval "$1" && return; sleep 0.1; done
    fail "in vain waited for: $1"
}

echo old > old
head -c 20000 /dev/zero | tr '\0' 'x' > letters
for command in list show stats position export "convert --to hex"; do
    expect 0 "" $command "$sample"
    "$rtcm2" $command "$sample" -o new && cmp out new || fail "a file gets something else: $command"
    expect 3 "unsure of its form" $command letters
    grep -q letters out && fail "an input that was not read is reported: $command"
    expect 3 "Is a directory" $command . -o old
    expect 3 "No such file" $command missing "$sample"
    [ -s out ] || fail "the other input was not read: $command"
    expect 4 "No space left" $command -o /dev/full "$sample"
    (ulimit -f 0 && "$rtcm2" $command -o old "$sample" 2>&1) | grep -q "too large" || fail "no limit: $command"
    expect 2 "" $command --where 'PRC <' "$sample" -o old
    keeps "after a mistake: $command"
done

# Parts of files
for pair in "5-1:no range of bytes" "18446744073709551000-:no message begins"; do
    "$rtcm2" list --range "${pair%%:*}" "$sample" 2> err && fail "takes $pair"
    grep -q "${pair#*:}" err || fail "does not say '${pair#*:}'"
done
expect 2 "can only be read from its beginning" list --range 0-5 -
# Every 20 minutes from 45:00 on, and what the options take of it
awk 'BEGIN { for (i = 0; i < 12; ++i)
    printf "%06x%06x010203\n", 6699425, (2700 + i * 1200) % 3600 / 0.6 * 2048 + i % 8 * 256 + 8 }' > hours.hex
while read -r first last options; do
    "$rtcm2" list $options hours.hex > out 2> err
    [ "$(awk 'NR == 2 { first = $1 } END { print first, $1 }' out)" = "$first $last" ] || fail "another part: $options"
done << 'EOF'
3 5 --from 3 --to 5
1 12 --from 44:00
3 12 --from 06:00
2 3 --from 05:00 --until 45:00
1 1 --until 05:00
5 8 --date 2026-11-23T22 --from 00:05:00 --until 01:25:00
6 7 --date 2026-11-23T22:45:00 --from 2026-11-24T00:20:00Z --until 2026-11-24T01:05:00
12 12 --from 12
EOF
expect 3 "do not tell when they were received" list --from 14:30:15 hours.hex
expect 1 "--from and --until choose" list --from 13 hours.hex
[ "$("$rtcm2" list --from 2026-01-01T00:00:00Z <(cat hours.hex) | wc -l)" = 13 ] || fail "does not know when it received"
expect 2 "neither the number of a message" list --from 0 "$sample"
expect 2 "no date with an hour" list --date 2026-11-23 "$sample"

# A file for each hour, station or type, which together have all messages
for split in "hour 5 hour-004" "hour 5 2026-11-24T02 --date 2026-11-23T22" "station 1 station-417" "type 1 type-14"; do
    read -r by count last options <<< "$split"
    expect 0 "12 messages in $count file" convert --to hex --split "$by" $options -o "by-$last" hours.hex
    [ "$(find "by-$last" | wc -l)" = $((count + 1)) ] && [ -f "by-$last/$last.hex" ] || fail "other files: $split"
    cat "by-$last"/* | cmp - hours.hex || fail "other messages: $split"
    (ulimit -f 0; exec "$rtcm2" convert --to hex --split type -o "by-$last" "$all" 2>&1) | grep -q "too large" ||
        fail "no limit: $split"
    cat "by-$last"/.[!.]* "by-$last"/* 2> err | cmp - hours.hex || fail "old files are lost: $split"
done
(ulimit -n 20; "$rtcm2" convert --to stream --split type -o many "$all" 2> err) || fail "too many files are open"
"$rtcm2" convert --to stream --type 16 "$all" | cmp - many/type-16.rtcm2 || fail "the parity of a file is another one"
expect 2 "needs a directory" convert --to hex --split type hours.hex -o old
expect 2 "lies in the output directory" convert --to hex --split type hours.hex -o .
expect 3 "nothing was written to empty" convert --to hex --split type -o empty "$sample" missing
[ -z "$(ls -A empty)" ] || fail "something is left"


for command in --help --version "list --help" manual "completion zsh" describe; do
    expect 0 "" $command
    "$rtcm2" $command > /dev/full 2> err
    ends 4 "No space left" "$command"
done
# What may have been meant.
expect 2 "no file 'lsit'; did you mean 'list'?" lsit x
expect 2 "no option --tpye; did you mean --type?" list --tpye=1 "$sample"
expect 2 "--form: 'strem' is none of auto, stream, packed, hex, words, aivdm; did you mean stream?" --form strem "$sample"
expect 2 "did you mean Corrections.PRC?" list --fields PRCC "$sample"
expect 2 "--decimal: 'x' is none of ., ," export --separator , --decimal x "$sample"
expect 2 "--type needs a value: TYPE" list --type
for number in 0 -1 +1 1x 18446744073709551616; do
    expect 2 "'$number' is no number of messages" convert --to hex --max $number "$sample"
done

# Without a command and without a file.
"$rtcm2" list -n 2 "$sample" > two
for arguments in "-qn 2 $sample" "--max=2 $sample" "-n 2 list $sample" "$sample -n2" "-n 2 -" "-n2"; do
    "$rtcm2" $arguments < "$sample" 2>&1 | cmp - two || fail "is no list: $arguments"
done
"$rtcm2" < "$sample" | cmp - <("$rtcm2" list "$sample") || fail "is no list of all"
cp "$sample" lsit && expect 0 "" lsit
[ "$(script -qec "$rtcm2" typed < /dev/null | tr -d '\r')" = "$("$rtcm2" --help)" ] || fail "no help on a terminal"
# hints WANTED COMMANDS: a terminal as input is told of in this way; one of another session is a serial line.
hints() {
    script -qec "$2" typed < /dev/null | grep -oE "Ctrl-D|stty -F /dev/pts/[0-9]+ raw" | sed 's|-F.*[0-9]|-F|' > hints
    echo "$1" | cmp - hints || fail "told of a terminal in another way: $2"
}
hints "Ctrl-D" "$rtcm2 encode --to hex"
hints "stty -F raw" "setsid -w $rtcm2 list; stty raw; timeout 0.5 setsid -w $rtcm2 list"

# Messages, but none that is chosen.
for command in list "export --format json" "convert --to hex" stats; do
    expect 1 "none of the messages in the input (105) is among" $command --station 5 "$sample" -o none
    expect 1 "no message found" $command /dev/null
done
"$rtcm2" export --format json --except 1,31 --type 1 "$sample" 2> err
ends 2 "leave no kind" "nothing can be chosen"

expect 3 'cannot read \x1B[2J\x0A: ' list $'\e[2J\n'
expect 1 "3, 22, 24, 32" position --type 1 "$sample"
expect 0 "" compare "$sample" "$sample"
"$rtcm2" compare --json - "$all" < "$sample" > out 2> err
[ $? -eq 1 ] && [ ! -s err ] && grep -q '"same": false' out || fail "inputs that differ are told otherwise"
expect 2 "only be one" compare - -
# What check ends with is its own.
expect 0 "" check "$sample"
for status in "1 --expect 1:2s $sample" "2 $damaged"; do
    "$rtcm2" check ${status#* } > out 2> err
    [ $? -eq "${status%% *}" ] && [ ! -s err ] || fail "another verdict: $status"
done
expect 3 "no type of message" check --expect x:1s "$sample"
expect 3 "--nosuch" check --nosuch "$sample"
expect 3 "No such file" check missing "$sample"
expect 3 "no message" check /dev/null
head -c 3000 "$sample" > growing
timeout --preserve-status -s INT 3 "$rtcm2" check --follow growing > out 2> err & (sleep 1; tail -c +3001 "$sample" >> growing)
wait $! || fail "a watch ends otherwise"
grep -q "^OK: station 417, 105 messages" out || fail "does not follow a file"
for inputs in "" "$sample" "$sample $all $sample"; do expect 2 "equired" compare $inputs; done
expect 3 "No such file" compare "$sample" missing
expect 3 "none of the messages in the input (134) is among" compare --station 1 "$sample" "$all"
expect 0 "at byte" list "$damaged" -o whole
expect 5 "at byte" list --quiet --on-error stop "$damaged"
expect 2 "does not go with" convert --to hex --keep-undecodable --station 417 "$sample"
expect 0 "" list --quiet "$damaged"
[ -s err ] && fail "--quiet is not quiet"

# All types but some: what is of an unknown one (14) stays.

# AIS: who sends a message, and when it came.
broadcasts=$2/broadcasts.nmea
expect 6 "105 messages were left out" convert --to aivdm "$sample"
expect 2 "needs the MMSI" convert --to aivdm --form stream "$sample"
expect 2 "needs the MMSI" encode --to aivdm "$2/source/all-types.ndjson"
expect 2 "'91,5' is no position" convert --to aivdm --mmsi 5 --position 91,5 "$sample"
expect 2 "one number" convert --to aivdm --mmsi 5,6 "$sample"
expect 2 "no place for times" convert --to words --times "$sample" -o old
expect 0 "" convert --to aivdm --mmsi 5 --position 54.5,-10.14 "$sample" -o sent.nmea
expect 0 "" convert --to stream --where 'MMSI == 5 and Sender_Longitude == -10.14' sent.nmea -o back
cmp back "$sample" || fail "another message came back from AIS sentences"
expect 0 "" convert --to aivdm --mmsi 2000723 "$broadcasts" sent.nmea "$sample"
[ "$(grep -c 'VDM,.,1,' out)" -eq 106 ] || fail "not one message of this sender and all that have none"
expect 0 "" convert --to hex --times "$broadcasts" -o timed.hex
expect 0 "" convert --to aivdm --times --mmsi 5 timed.hex
[ "$(grep -o 'c:[0-9]*' out)" = "$(printf 'c:%s\n' 1700000000 1700000002500 1700000004250 1700000009)" ] ||
    fail "times are lost on the way"

{ "$rtcm2" convert --to hex "$all" && echo 663805000000; } > all
expect 0 "" convert --form hex --to hex --except 1,16 all
grep -vE '^66(0[4-7]|4[0-3])' all | cmp -s - out || fail "--except leaves out other types than it says"

# The locale of the user changes nothing.
for command in "show" "stats" "export --texts"; do
    for locale in C de_DE.UTF-8 hi_IN.UTF-8; do LC_ALL=$locale "$rtcm2" $command "$all" -o $locale; done
    cmp C de_DE.UTF-8 && cmp C hi_IN.UTF-8 || fail "other output in another locale: $command"
done

# Links lead to the file that is replaced, which keeps its permissions; devices are not replaced.
echo old > target && chmod 604 target && ln -s target link && ln -s made dangling
for output in link dangling /dev/null; do expect 0 "" list "$sample" -o $output; done
[ "$(stat -c %a:%F target link dangling /dev/null | tr '\n' ' ')" = "604:regular file 777:symbolic link \
777:symbolic link 666:character special file " ] && cmp target made || fail "files are not what they were"

# Standard descriptors that are closed, and a reader that goes away.
"$rtcm2" list "$damaged" -o quiet 2>&-
cmp whole quiet || fail "what is told gets into the output"
"$rtcm2" list "$sample" 2> err >&-
ends 4 "cannot write" "closed output"
"$rtcm2" list - 2> err > out <&-
ends 3 "cannot read" "closed input"
"$rtcm2" show "$all" 2> err | head -n 1 > out
[ "${PIPESTATUS[0]}" -eq 0 ] && [ ! -s err ] || fail "a closed pipe is complained about"

# Input that can be read again leaves the old file when a signal comes, also at the second one, which
# does not wait until what is told has been read.
mkfifo told fifo
long=$(printf "$damaged %.0s" $(seq 1000))
for signals in "130 INT" "129 HUP" "130 TERM INT"; do
    "$rtcm2" list $long -o old 2> told &
    exec 8< told
    waitFor '[ -n "$(find . -name ".rtcm2-*")" ]'
    sleep 0.3
    for signal in ${signals#* }; do
        waitFor 'grep -q "^ShdPnd:.0*$" /proc/$!/status'
        kill "-$signal" $!
    done
    [ "${signals#* }" = "TERM INT" ] && waitFor '! kill -0 $! 2> err'
    cat <&8 > err
    wait $!
    ends "${signals%% *}" "" "$signals"
    keeps "after $signals"
done

# liveKeeps SENT WANTED ARGUMENTS...: what comes from a pipe is passed on at once and stays when interrupted.
liveKeeps() {
    rm -f live
    "$rtcm2" "${@:3}" > seen 2> err &
    exec 9> fifo
    cat "$1" >&9
    waitFor '[ -n "$(find . \( -name seen -o -name ".rtcm2-*" \) -size '"$(stat -c %s "$2")"'c)" ]'
    kill -INT $!
    wait $!
    ends 130 "" "${*:3}"
    exec 9>&-
    [ -s err ] && fail "what an interruption cuts off is told as a mistake: ${*:3}"
    cat seen live 2> /dev/null | cmp - "$2" || fail "what came before an interruption is lost: ${*:3}"
}
# No more is read than what is asked for needs.
exec 9<> fifo
for enough in "0 --max 2" "0 --until 2" "1 --until 2026-01-01T00:00:00Z"; do
    cat "$sample" >&9
    expect "${enough%% *}" "" list ${enough#* } fifo
done
exec 9>&-
head -c 50 "$sample" | cat "$sample" - > cut
{ "$rtcm2" export "$sample" && printf '{"kind": '; } > cut.json
"$rtcm2" list "$sample" > wanted
liveKeeps cut wanted list fifo
liveKeeps cut wanted list fifo -o live
liveKeeps cut.json "$sample" encode fifo --on-error stop -o live

# With any amount of memory it works or says that there is too little (1 and 127: to be loaded; 134: for a
# library that Qt loads).
# Sanitizers need more than can be limited.
for kilobytes in 4000000 $(seq 40000 100 60000); do
    (ulimit -v $kilobytes && exec "$rtcm2" describe --json) > out 2> err
    status=$?
    [ $status -ne 0 ] && [ $kilobytes -eq 4000000 ] && break
    # Some limits make the loader itself crash, whatever the program is to do.
    [ $status -eq 139 ] && ! (ulimit -v $kilobytes && exec "$rtcm2" --version) > out 2> err && continue
    echo "$status $(tail -n 1 err)"
done | grep -vE '^((0|1|127) |134 GLib)' | sort -u > scarce
[ ! -s scarce ] || [ "$(cat scarce)" = "7 rtcm2: there is not enough memory" ] || fail "no memory: $(cat scarce)"

# completes WANTED WORDS...: what the last word may become, told by a shell that sourced the completion.
completes() {
    got=$(bash -uc 'source <("$1" completion bash); COMP_WORDS=("${@:2}"); COMP_CWORD=$(($# - 2)); _rtcm2
        printf "%s|" "${COMPREPLY[@]}"' bash "$rtcm2" rtcm2 "${@:2}")
    [ "$got" = "$1" ] || fail "completes to $got instead of $1: ${*:2}"
}
touch "file 1" "file 2"
completes "list|" lis
completes "file 1|file 2|" file
completes "--type|" --ty
completes "file 1|file 2|" -n 2 "$sample" file
completes "file 1|file 2|" show -q -o file
completes "16,20|16,21|16,22|16,23|16,24|" stats --type 16,2
completes "18|" list --except = 18
completes "packed|" convert --to p
completes "ECEF_X,Corrections.PRC|ECEF_X,Corrections.PRC_m|" export --fields ECEF_X,Corrections.PRC
completes "Corrections|Data|" export --rows ""
completes ",|;|||tab|" export --separator ""
completes "DGNSS|" describe DG
completes "zsh|" completion z
"$rtcm2" completion zsh > zsh
! type zsh > /dev/null 2>&1 || zsh -n zsh || fail "the zsh completion is no zsh"
for option in --where --form --on-error --texts; do
    grep -qF -- "${option//-/\\-}" <("$rtcm2" manual) || fail "the manual lacks $option"
done

exit $((failures > 0))
