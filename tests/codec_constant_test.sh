#!/bin/sh
# Fails when an object of a library has room for data that can change.
#   codec_constant_test.sh <objdump> <static library>
"$1" -h "$2" | awk '
    $1 ~ /^[0-9]+$/ && $2 ~ /^\.text/ { ++code }
    $1 ~ /^[0-9]+$/ && $2 ~ /^\.(t?bss|t?data)/ && $2 !~ /^\.data\.rel\.ro|DW\.ref/ && $3 !~ /^0+$/ {
        print "can change: section " $2 " of 0x" $3 " bytes"
        ++found
    }
    END { exit found > 0 || code == 0 }'
