#!/usr/bin/env bash
# icons.sh RBHOST FOLDER: the catalogue of named images, on systems with an icon theme and without.
. "$(dirname "$0")/expect.sh"
rbhost=$1 folder=$2
rm -rf "$folder"
mkdir -p "$folder/home" "$folder/data/icons/hicolor/32x32"

# icons SHEET: writes the catalogue on a machine that has nothing but $folder/data.
icons() {
    HOME=$folder/home XDG_DATA_HOME=$folder/data XDG_DATA_DIRS=$folder/nothing \
        "$rbhost" run examples/icons.bas "$folder/$1"
}

printed=$(icons bare)
same "exit status" 0 $?
grep -q "^0 of 60 named images" <<<"$printed" || fail "images without a theme: $printed"
same "names" 60 "$(grep "^not on this system" <<<"$printed" | grep -oE "NS[A-Za-z]+" | sort -u | wc -l)"

cat >"$folder/data/icons/hicolor/index.theme" <<'END'
[Icon Theme]
Name=hicolor
Directories=32x32
[32x32]
Size=32
Type=Fixed
END
printf 'P6 32 32 255\n' >"$folder/plain.ppm"
yes 'three colours of no picture' | head -c 3072 >>"$folder/plain.ppm"
cjpeg -outfile "$folder/plain.jpg" "$folder/plain.ppm"
cat >"$folder/write.bas" <<'END'
Dim image As NSImageZNT = NSImageZNT.imageWithContentsOfPath(Arguments(0))
GetFolderItem(Arguments(1)).WriteAll(image.PNGRepresentation)
END
"$rbhost" run "$folder/write.bas" "$folder/plain.jpg" "$folder/data/icons/hicolor/32x32/folder.png"

printed=$(icons themed)
same "exit status" 0 $?
grep -q "^[1-9][0-9]* of 60 named images" <<<"$printed" || fail "no images of a theme: $printed"
pngcheck -q "$folder/themed/NSFolder.png" || fail "NSFolder.png is not valid"
file "$folder/themed/NSFolder.png" | grep -q "64 x 64" || fail "$(file "$folder/themed/NSFolder.png")"
grep -q "NSImageNameFolder<br><small>NSFolder, 32 px" "$folder/themed/index.html" || fail "the sheet does not show NSFolder"
same "figures" "$(ls "$folder/themed" | grep -c png)" "$(grep -c "<figure>" "$folder/themed/index.html")"
finish
