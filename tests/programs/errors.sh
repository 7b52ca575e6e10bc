#!/usr/bin/env bash
# errors.sh RBHOST FOLDER: the form and the status of what goes wrong.
. "$(dirname "$0")/expect.sh"
rbhost=$1 folder=$2
mkdir -p "$folder"

# program_gives STATUS ERROR SOURCE [OPTION...]: ERROR is a pattern for the whole of standard error.
program_gives() {
    local status=$1 error=$2 source=$3 seen
    shift 3
    printf '%s\n' "$source" >"$folder/program.bas"
    seen=$("$rbhost" "$@" run "$folder/program.bas" 2>&1 >"$folder/printed")
    same "status of «$source»" "$status" $?
    [[ $seen =~ ^$error$ ]] || fail "«$source» said «$seen», expected «$error»"
}

program_gives 0 "" 'Print "fine"'
program_gives 1 '.*program\.bas:2: NilObjectException: Path is empty' 'Dim i As Integer
Call NSImageZNT.imageWithContentsOfPath("")'
program_gives 1 '.*program\.bas:3: OutOfBoundsException: .+' 'Dim a(2) As Integer

a(3) = 1'
program_gives 1 '.*program\.bas:1: IOException: told' 'Raise New IOException("told")'
program_gives 2 '.*program\.bas:2: .+' 'Print 1
Print (2'
program_gives 2 '.*program\.bas:1: .+' 'Wend'
program_gives 3 "" 'Quit 3'
same "what was printed before an error" "first" "$(
    printf 'Print "first"\nRaise New RuntimeException\n' >"$folder/program.bas"
    "$rbhost" run "$folder/program.bas" 2>/dev/null
)"

"$rbhost" run "$folder/there-is-no-such.bas" >/dev/null 2>"$folder/errors"
same "status for a missing file" 2 $?
grep -q "there-is-no-such.bas" "$folder/errors" || fail "a missing file is not named"
"$rbhost" --without-service NoSuchService list >/dev/null 2>"$folder/errors"
same "status for an unknown service" 2 $?
grep -q "NoSuchService" "$folder/errors" || fail "an unknown service is not named"
"$rbhost" --plugin "$folder/program.bas" list >/dev/null 2>"$folder/errors"
same "status for a plug-in that is none" 2 $?
"$rbhost" dance >/dev/null 2>&1
same "status for an unknown command" 2 $?
finish
