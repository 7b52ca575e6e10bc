#!/usr/bin/env bash
# tour.sh RBHOST FOLDER: runs the tour and has each picture judged by another library's tools.
. "$(dirname "$0")/expect.sh"
rbhost=$1 out=$2
rm -rf "$out"
mkdir -p "$out"

printed=$("$rbhost" run examples/tour.bas examples/photo.jpg "$out" 2>"$out/errors")
same "exit status" 0 $?
same "standard error" "" "$(cat "$out/errors")"
grep -q "Tour done" <<<"$printed" || fail "the tour did not reach its end: $printed"
grep -qE "READ BACK AS|CANNOT BE READ" <<<"$printed" && fail "a picture was not read back: $printed"
grep -q "NilObjectException: Path is empty" <<<"$printed" || fail "no exception was caught"
grep -q "OutOfBoundsException: Parameter index to method RepresentationHeight is too big. Range is 0 to 0, but value is 1." <<<"$printed" ||
    fail "no range was told"

# The photo is 1500 x 1000: a landscape keeps the width that was asked for.
for png in fitted:480x320 squeezed:480x240 flipped:480x320 thumbnail:120x80 faded:480x320; do
    name=${png%%:*} size=${png##*:}
    pngcheck -q "$out/$name.png" || fail "$name.png is not valid"
    file "$out/$name.png" | grep -q "${size/x/ x }, 8-bit/color RGB" || fail "$name.png: $(file "$out/$name.png")"
done
file "$out/faded.png" | grep -q RGBA || fail "faded.png has lost its alpha"

for jpeg in quality-20 quality-60 quality-95 faded; do
    djpeg -fast -outfile "$out/$jpeg.ppm" "$out/$jpeg.jpg" || fail "$jpeg.jpg is not valid"
    same "$jpeg.jpg" "480 320" "$(sed -n 2p "$out/$jpeg.ppm")"
done
[ "$(stat -c %s "$out/quality-20.jpg")" -lt "$(stat -c %s "$out/quality-60.jpg")" ] &&
    [ "$(stat -c %s "$out/quality-60.jpg")" -lt "$(stat -c %s "$out/quality-95.jpg")" ] ||
    fail "better quality must take more bytes"

for tiff in none:None lzw:LZW packbits:PackBits; do
    told=$(tiffinfo "$out/${tiff%%:*}.tiff" 2>&1)
    grep -qi "Compression Scheme: ${tiff##*:}" <<<"$told" || fail "${tiff%%:*}.tiff: $told"
    grep -q "Image Width: 480 Image Length: 320" <<<"$told" || fail "${tiff%%:*}.tiff: $told"
done
# Lossless ways of writing the same picture hold the same pixels.
for tiff in lzw packbits; do
    tiffcmp "$out/none.tiff" "$out/$tiff.tiff" >"$out/compared" 2>&1
    grep -vq "^Compression" "$out/compared" && fail "$tiff.tiff differs: $(cat "$out/compared")"
done
[ "$(grep -c "<figure>" "$out/index.html")" = 12 ] || fail "the sheet does not show all pictures"
finish
