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
# What no part makes a host exception of cannot be caught, but ends the program in order.
program_gives 1 '.*program\.bas:3: NSInvalidArgumentException: .+' 'Dim empty As New NSImageZNT(0, 0)
Try
Call empty.JPEGRepresentation
Catch
End Try' --without-base
program_gives 2 '.*program\.bas:2: .+' 'Print 1
Print (2'
program_gives 2 '.*program\.bas:1: .+' 'Wend'
program_gives 0 "" 'Call NSImageZNT.imageWithData("no image")' \
    --without-service PluginDisposeStringData
program_gives 0 "" 'Call NSImageZNT.imageWithData("no image")' \
    --without-service PluginGetStringData
program_gives 3 "" 'Quit 3'
same "what was printed before an error" "first" "$(
    printf 'Print "first"\nRaise New RuntimeException\n' >"$folder/program.bas"
    "$rbhost" run "$folder/program.bas" 2>/dev/null
)"

# Logging asks for the process's name, and so for its arguments and its environment.
logging='Dim empty As New NSImageZNT(0, 0)
Try
Call empty.JPEGRepresentation
Catch
Print "went on"
End Try'
printf '%s\n' "$logging" >"$folder/program.bas"
same "with an argument and a variable that are no text" "went on" \
    "$(STRANGE=$'\xff' "$rbhost" run "$folder/program.bas" $'\xff' 2>/dev/null)"

"$rbhost" run "$folder/there-is-no-such.bas" >/dev/null 2>"$folder/errors"
same "status for a missing file" 2 $?
grep -q "there-is-no-such.bas" "$folder/errors" || fail "a missing file is not named"
"$rbhost" --without-service NoSuchService list >/dev/null 2>"$folder/errors"
same "status for an unknown service" 2 $?
grep -q "NoSuchService" "$folder/errors" || fail "an unknown service is not named"
"$rbhost" --plugin "$folder/program.bas" list >/dev/null 2>"$folder/errors"
same "status for a plug-in that is none" 2 $?
for command in list "run $folder/program.bas"; do
    # shellcheck disable=SC2086
    "$rbhost" $command >/dev/full 2>"$folder/errors"
    same "status of «$command» with nowhere to write to" 1 $?
    grep -q "output" "$folder/errors" || fail "«$command» does not say that its output was lost"
done
"$rbhost" dance >/dev/null 2>&1
same "status for an unknown command" 2 $?
finish
