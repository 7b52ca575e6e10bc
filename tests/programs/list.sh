#!/usr/bin/env bash
# list.sh RBHOST: the classes that the plug-in registers, in the order in which it does.
. "$(dirname "$0")/expect.sh"
rbhost=$1

listed=$("$rbhost" --without-base list)
same "exit status" 0 $?
same "classes" "NSImageZNT NSImageRepZNT NSPDFImageRepZNT NSEPSImageRepZNT NSPICTImageRepZNT NSBitmapImageRepZNT" \
    "$(grep -oE '^Class [A-Za-z]+' <<<"$listed" | cut -d ' ' -f 2 | tr '\n' ' ' | sed 's/ $//')"
for member in "imageWithData(data as memoryblock) as NSImageZNT" "Handle" "setSize(width as double, height as double)" "NSImageRepMatchesDevice"; do
    grep -qF "$member" <<<"$listed" || fail "«$member» is not listed"
done
one=$("$rbhost" list nsimagerepznt)
grep -q "Class NSImageRepZNT" <<<"$one" || fail "a class is found in any case: $one"
grep -q "Class NSImageZNT" <<<"$one" && fail "one class was asked for: $one"
"$rbhost" list NoSuchClass >/dev/null 2>&1
same "status for an unknown class" 2 $?
finish
