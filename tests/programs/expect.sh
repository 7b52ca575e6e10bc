# What the program tests share. Sourced.
set -u
failures=0
fail() {
    printf 'FAILED: %s\n' "$*"
    failures=$((failures + 1))
}
# same WHAT EXPECTED SEEN
same() { [ "$2" = "$3" ] || fail "$1: expected «$2», saw «$3»"; }
finish() {
    [ "$failures" = 0 ] && exit 0
    printf '%s failures\n' "$failures"
    exit 1
}
