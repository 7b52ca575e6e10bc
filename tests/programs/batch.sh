#!/usr/bin/env bash
# batch.sh RBHOST FOLDER: converts a hundred files, two of which are no images.
. "$(dirname "$0")/expect.sh"
rbhost=$1 folder=$2
rm -rf "$folder"
mkdir -p "$folder/in/sub"

# ppm WIDTH HEIGHT: a pattern of that size.
ppm() {
    printf 'P6 %d %d 255\n' "$1" "$2"
    yes 'three colours of no picture' | head -c $((3 * $1 * $2))
}
for i in $(seq 1 60); do ppm $((300 + i)) 200 | cjpeg >"$folder/in/$i.jpg"; done
ppm 200 800 >"$folder/tall.ppm"
for i in $(seq 61 98); do ppm2tiff "$folder/tall.ppm" "$folder/in/$i.tiff"; done
printf 'no image' >"$folder/in/notes.txt"
head -c 300 "$folder/in/1.jpg" >"$folder/in/cut.off.jpg"

printed=$("$rbhost" run examples/batch.bas "$folder/in" "$folder/out" 2>"$folder/progress")
same "exit status" 1 $?
grep -qE "^98 of 100 files converted in [0-9.]+ seconds$" <<<"$printed" || fail "the end was not told: $printed"
same "failures" "  cut.off.jpg: is no image that can be read
  notes.txt: is no image that can be read" "$(tail -n +2 <<<"$printed")"
same "last progress" "98 of 100 converted, 2 failed" "$(tr '\r' '\n' <"$folder/progress" | tail -n 1)"
same "first progress" "0 of 100 converted, 0 failed" "$(tr '\r' '\n' <"$folder/progress" | sed -n 2p)"
[ "$(tr '\r' '\n' <"$folder/progress" | sort -u | wc -l)" -ge 4 ] || fail "no progress between the first and the last"

same "pictures" 98 "$(ls "$folder/out" | wc -l)"
for picture in 1:301x200 60:360x200 61:160x640; do
    file=$folder/out/${picture%%:*}.jpg
    djpeg -fast -outfile "$folder/out.ppm" "$file" || fail "$file is not valid"
    same "size of $file" "${picture##*:}" "$(sed -n 2p "$folder/out.ppm" | tr ' ' x)"
done

# Two sources of one name give two pictures; all well gives the status 0.
mkdir "$folder/same"
cp "$folder/in/1.jpg" "$folder/same/a.jpg"
cp "$folder/in/61.tiff" "$folder/same/a.tiff"
"$rbhost" run examples/batch.bas "$folder/same" "$folder/both" >/dev/null 2>&1
same "status when all went well" 0 $?
same "pictures of one name" "a.jpg a.tiff.jpg" "$(ls "$folder/both" | tr '\n' ' ' | sed 's/ $//')"

mkdir "$folder/empty"
same "an empty folder" "0 of 0 files converted" "$("$rbhost" run examples/batch.bas "$folder/empty" "$folder/none" 2>/dev/null | cut -d ' ' -f 1-5)"
"$rbhost" run examples/batch.bas "$folder/missing" 2>/dev/null
same "status without a folder" 2 $?
finish
