#!/bin/bash
# Installs a build into an empty directory, moves that elsewhere, and builds and runs programs
# against what was installed and nothing else; and one that has the sources as a part of itself.
#   tests/outside/run.sh <build directory> [codec]    codec: the build has nothing else
set -euo pipefail
build=$(realpath "$1")
scope=${2:-all}
here=$(realpath "$(dirname "$0")")
root=$(realpath "$here/../..")
EXAMPLES=$root/docs/examples

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

fail() {
    echo "failed: $*" >&2
    exit 1
}

# expect <text> <command...>: the command succeeds and its output has the text.
expect() {
    local output
    output=$("${@:2}") || fail "${*:2}"
    [[ $output == *"$1"* ]] || fail "'$1' is not in the output of ${*:2}: $output"
    echo "ok: ${*:2}"
}

# own_libraries <program>: every library of the project comes from the installation.
own_libraries() {
    local libraries
    libraries=$(ldd "$1" | grep -E 'rtcm2|libvorlo_') || fail "$1 uses no library of the project"
    ! grep -v "=> $prefix/" <<< "$libraries" || fail "$1 uses libraries from elsewhere"
}

# cmake_project <name>: configures and builds tests/outside/<name> in a directory of that name.
cmake_project() {
    cmake -G Ninja -S "$here/$1" -B "$1" -DCMAKE_PREFIX_PATH="$prefix" -DEXAMPLES="$EXAMPLES" \
        -DROOT="$root" -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF > log 2>&1 &&
        cmake --build "$1" >> log 2>&1 || {
        cat log >&2
        fail "the project tests/outside/$1 does not build"
    }
}

DESTDIR=$work/stage cmake --install "$build" --prefix /opt/somewhere > log || fail "install: $(cat log)"
prefix=$work/moved
mv stage/opt/somewhere "$prefix"
rmdir stage/opt stage || fail "something was installed outside the prefix"
lib=$(dirname "$(dirname "$(find "$prefix" -name rtcm2-codec.pc)")")

! grep -rlE "$build|$root" "$prefix/include" "$lib/cmake" "$lib/pkgconfig" ||
    fail "installed files name the build's directories"

cmake_project codec
expect "satellite 12: PRC -100" codec/decode
own_libraries codec/decode
expect "byte 44: type 1 of station 5" codec/stream
own_libraries codec/stream
expect "" codec/forms
own_libraries codec/forms
! ldd codec/decode | grep libQt || fail "the codec needs Qt"

export PKG_CONFIG_PATH=$lib/pkgconfig
# compile <library> <example> <what it prints> <program> <pkg-config option...>
compile() {
    local flags
    read -ra flags <<< "$(pkg-config "${@:5}" --cflags --libs "rtcm2-$1")"
    cc -std=c99 -pedantic-errors -Wall -Werror "$EXAMPLES/$2.c" "${flags[@]}" -o "$4"
    expect "$3" "./$4"
}
for example in "codec decode satellite 12: PRC -100" "framing stream byte 44: type 1 of station 5"; do
    read -r library name printed <<< "$example"
    compile "$library" "$name" "$printed" "$name"
    own_libraries "$name"
    rm "$lib/librtcm2_$library.so"
    compile "$library" "$name" "$printed" "${name}_static" --static
    ! ldd "${name}_static" | grep rtcm2 || fail "the static form needs the shared library"
done

cmake_project parent
expect "satellite 12: PRC -100" parent/decode
DESTDIR=$work/stage cmake --install parent > log
[ "$(find stage -type f -printf '%f ')" = "decode " ] || fail "a part installs something: $(cat log)"

[ "$scope" = all ] || exit 0
expect "rtcm2 " "$prefix/bin/rtcm2" --version
expect "29 messages" "$prefix/bin/rtcm2" stats "$root/samples/all-types.rtcm2"
own_libraries "$prefix/bin/rtcm2"
[ "$(pkg-config --modversion rtcm2-codec)" = "$("$prefix/bin/rtcm2" --version | cut -d' ' -f2)" ] ||
    fail "pkg-config and the program give different versions"

cmake_project host
expect "Station Health: UDRE Scale Factor = 1" host/host
own_libraries host/host
