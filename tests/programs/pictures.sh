#!/usr/bin/env bash
# pictures.sh RBHOST FOLDER: Pictures with masks and a chart, judged by another library's tools.
. "$(dirname "$0")/expect.sh"
rbhost=$1 out=$2
rm -rf "$out"
mkdir -p "$out"

# pixel FILE.png X Y: its red, green and blue, and its alpha where there is one
pixel() {
    local channels=$(pngtopnm "$1" | pnmcut -left "$2" -top "$3" -width 1 -height 1 | pnmtoplainpnm | tail -n 1)
    local alpha=$(pngtopnm -alpha "$1" 2>/dev/null | pnmcut -left "$2" -top "$3" -width 1 -height 1 | pnmtoplainpnm | tail -n 1)
    echo $channels $alpha
}

printed=$("$rbhost" run examples/masks.bas examples/photo.jpg "$out" 2>"$out/errors")
same "exit status of masks.bas" 0 $?
same "standard error" "" "$(cat "$out/errors")"
grep -q "^The badge is 240 x 240, alpha: True$" <<<"$printed" || fail "no badge: $printed"
for png in badge:240x240 side-by-side:540x280; do
    name=${png%%:*} size=${png##*:}
    pngcheck -q "$out/$name.png" || fail "$name.png is not valid"
    file "$out/$name.png" | grep -q "${size/x/ x }, 8-bit/color RGB" || fail "$name.png: $(file "$out/$name.png")"
done
same "the corner of the badge" "0 0 0 0" "$(pixel "$out/badge.png" 0 0)"
same "the sun of the badge" "255 200 60 255" "$(pixel "$out/badge.png" 70 105)"
same "the sun as drawn" "255 200 60 255" "$(pixel "$out/side-by-side.png" 90 125)"
same "the sun as brought back" "255 200 60 255" "$(pixel "$out/side-by-side.png" 350 125)"
djpeg -fast -outfile "$out/composed.ppm" "$out/composed.jpg" || fail "composed.jpg is not valid"
same "composed.jpg" "720 480" "$(sed -n 2p "$out/composed.ppm")"

printed=$("$rbhost" run examples/chart.bas "$out" 10 40 25 2>"$out/errors")
same "exit status of chart.bas" 0 $?
same "standard error" "" "$(cat "$out/errors")"
same "chart.bas" "Drawn: 3 bars up to 40, on a scale up to 40" "$printed"
pngcheck -q "$out/chart.png" || fail "chart.png is not valid"
same "the paper" "255 255 255" "$(pixel "$out/chart.png" 1 1 | cut -d' ' -f1-3)"
# The middle of the second bar, as high as the scale: its tint is the deepest.
same "the highest bar" "80 110 210" "$(pixel "$out/chart.png" 335 200 | cut -d' ' -f1-3)"
djpeg -fast -outfile "$out/chart.ppm" "$out/chart.jpg" || fail "chart.jpg is not valid"
same "chart.jpg" "640 400" "$(sed -n 2p "$out/chart.ppm")"
finish
