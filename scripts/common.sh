# Shared by the commands at the root. Sourced, not run.

project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
architecture=$(dpkg --print-architecture 2>/dev/null || uname -m)
build=$project/build/$architecture

say() { printf '%s\n' "$*"; }
die() {
    printf '%s\n' "$*" >&2
    exit 1
}

# as_root COMMAND...: as the super-user, by sudo where we are not.
as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

# quietly LOG COMMAND...: keeps a command's words to a log that is shown only when it fails.
quietly() {
    local log=$1
    shift
    mkdir -p "$(dirname "$log")"
    if ! "$@" >"$log" 2>&1; then
        tail -n 40 "$log" >&2
        die "failed: $* (all of it: $log)"
    fi
}

# install_packages KIND...: installs what scripts/packages lists of these kinds and is missing.
install_packages() {
    command -v dpkg-query >/dev/null ||
        die "This needs Debian 12 or a relative of it: dpkg is not here."
    local wanted missing
    wanted=$(for kind in "$@"; do sed -n "s/^$kind //p" "$project/scripts/packages"; done)
    # shellcheck disable=SC2086
    missing=$(comm -23 <(printf '%s\n' $wanted | sort) \
        <(dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' $wanted 2>/dev/null | sed -n 's/^ii *//p' | sort))
    [ -n "$missing" ] || return 0
    missing=$(printf '%s ' $missing)
    if [ "$(id -u)" != 0 ] && ! command -v sudo >/dev/null; then
        die "These packages are missing: $missing
Neither root nor sudo is here to install them. As root, run: apt-get install $missing"
    fi
    say "Installing: $missing"
    quietly "$project/build/apt.log" as_root apt-get update
    # shellcheck disable=SC2086
    quietly "$project/build/apt.log" as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y --no-install-recommends $missing
}

# build_targets PRESET FOLDER TARGET...: configures where that was not done, and builds.
build_targets() {
    local preset=$1 folder=$2
    shift 2
    if [ ! -f "$folder/build.ninja" ]; then
        say "Configuring ${folder#"$project"/}"
        (cd "$project" && quietly "$folder/configure.log" cmake --preset "$preset" -B "$folder")
    fi
    # A dry run tells whether there is anything to do, so that an up-to-date build is silent.
    if ! ninja -C "$folder" -n "$@" 2>/dev/null | grep -q 'no work to do'; then
        say "Building ${folder#"$project"/}"
        quietly "$folder/build.log" ninja -C "$folder" "$@"
    fi
}
