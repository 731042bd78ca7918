#!/bin/sh
# plots.sh QORKES-ULP: plot data are blocks for each precision, region and curve, each
# with a headline and points whose argument lies in the region and whose error that
# function may have.
set -eu
directory=$(mktemp -d)
trap 'rm -rf "$directory"' EXIT
"$1" tan pow --samples 20000 --plots "$directory" >"$directory/report"

blocks() { # FUNCTION
    sed -n 's/^# //p' "$directory/$1.txt"
}
expected='double | up to pi | log2 argument | HA
double | up to 4e5 | log2 argument | HA
double | above 4e5 | log2 argument | HA
double | up to pi | log2 argument | 50
double | up to 4e5 | log2 argument | 50
double | above 4e5 | log2 argument | 50
double | up to pi | log2 argument | tan
double | up to 4e5 | log2 argument | tan
double | above 4e5 | log2 argument | tan'
[ "$(blocks Tan | grep double)" = "$expected" ] || {
    echo "blocks of double Tan:" && blocks Tan | grep double
    exit 1
}
blocks Pow | grep -qx 'float | bases from 1/4 to 4 | argument | 21'
blocks Pow | grep -qx 'float | denormal results | log2 result | pow'

awk -F ' [|] ' '
/^# / { region = $2; next }
!NF { next }
{ ++points[region]; split($0, point, " "); x = point[1]; error = point[2] }
region == "up to pi" && (x < -40 || x > 1.66) { exit failed = 1 }
region == "up to 4e5" && (x < 1.63 || x > 18.61) { exit failed = 1 }
region == "above 4e5" && (x < 18.6 || x > 1024) { exit failed = 1 }
split($0, point, " ") != 2 || !(error >= 0 && error < 5) { exit failed = 1 }
END {
    if (failed) print "line " NR ", " region ": " $0
    for (region in points) # 64 parts of each of two precisions and their three curves
        if (points[region] != 6 * 64) {
            print region ": " points[region] " points"
            failed = 1
        }
    exit failed
}' "$directory/Tan.txt"
