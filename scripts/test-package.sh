#!/usr/bin/env bash
# Installs the built Debian package on this machine the way a user would, checks what distributions
# check (desktop entry, AppStream metadata, the files in place, both programs starting from /usr/bin),
# and removes the package again, also when a check fails.
# Usage: scripts/test-package.sh BUILD-DIR
set -euo pipefail

build=${1:-build}
deb=$(ls -t "$build"/tarvane_*.deb 2>/dev/null | head -n 1 || true)
if [ -z "$deb" ]; then
    echo "No package in $build; run make package first." >&2
    exit 1
fi
deb=$(realpath "$deb")
app_id=org.tarvane.Tarvane
version=$(dpkg-deb -f "$deb" Version)

sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
    sudo_cmd=(sudo)
fi
apt_get() {
    # Other jobs on the machine may hold the dpkg lock for a while.
    DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get -o DPkg::Lock::Timeout=600 -y -qq "$@"
}

missing=()
for p in desktop-file-utils appstream; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
    apt_get update
    apt_get install --no-install-recommends "${missing[@]}"
fi

sandbox=$(mktemp -d)
cleanup() {
    apt_get remove --purge tarvane >/dev/null || true
    rm -rf "$sandbox"
}
trap cleanup EXIT

echo "== installing $(basename "$deb")"
# Without the recommended Wayland plugin, whose removal afterwards would leave its libraries behind.
apt_get install --no-install-recommends "$deb"
dpkg-query -W -f='${Package} ${Version} depends on: ${Depends}\n' tarvane

fail() {
    echo "FAILED: $*" >&2
    exit 1
}

echo "== files in place"
expected=(
    /usr/bin/tarvane
    /usr/bin/tarvane-cli
    /usr/share/applications/$app_id.desktop
    /usr/share/metainfo/$app_id.metainfo.xml
    /usr/share/icons/hicolor/scalable/apps/$app_id.svg
    /usr/share/man/man1/tarvane.1
    /usr/share/man/man1/tarvane-cli.1
    /usr/share/bash-completion/completions/tarvane-cli
)
for size in 16 22 24 32 48 64 128 256; do
    expected+=("/usr/share/icons/hicolor/${size}x${size}/apps/$app_id.png")
done
for file in "${expected[@]}"; do
    [ -s "$file" ] || fail "$file is missing"
done
echo "${#expected[@]} files"

echo "== desktop-file-validate"
desktop-file-validate "/usr/share/applications/$app_id.desktop"
echo "== appstreamcli validate"
appstreamcli validate --no-net "/usr/share/metainfo/$app_id.metainfo.xml"

echo "== versions"
# Without any display: --version must not need a screen.
gui_version=$(env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM /usr/bin/tarvane --version)
cli_version=$(/usr/bin/tarvane-cli --version)
echo "$gui_version"
echo "$cli_version"
[ "$gui_version" = "Tarvane $version" ] || fail "tarvane --version printed '$gui_version'"
[ "$cli_version" = "tarvane-cli $version" ] || fail "tarvane-cli --version printed '$cli_version'"

echo "== the manual page"
if command -v man >/dev/null; then
    MANPAGER=cat MANWIDTH=80 man tarvane-cli 2>/dev/null | grep -q "tarvane-cli - read and write" \
        || fail "man tarvane-cli does not show the page"
    echo "man tarvane-cli: found"
fi

echo "== the programs on a sandbox"
export HOME=$sandbox/home
mkdir -p "$HOME"
vehicles=$(/usr/bin/tarvane-cli --root "$sandbox" vehicles 2>/dev/null)
[ "$vehicles" = $'My Car\tMYCAR0001' ] || fail "tarvane-cli vehicles printed '$vehicles'"
[ -s "$sandbox/My Documents/Tarvane Files/Velcora.ini" ] || fail "tarvane-cli did not create the data folder"
/usr/bin/tarvane-cli --root "$sandbox" add fuel "My Car" --odometer 1200 --quantity 10 --price 3 \
    || fail "tarvane-cli add failed"
# On the folder the command line has set up and saved its options in (so no first-start message
# waits for an answer), the GUI quits by itself after its first painted frame.
started=$(QT_QPA_PLATFORM=offscreen TARVANE_STARTUP_TIMING=exit timeout 60 /usr/bin/tarvane --root "$sandbox" 2>&1) \
    || fail "tarvane did not start and quit on its own: $started"
grep -q "first paint after" <<<"$started" || fail "tarvane did not paint its window: $started"
grep "first paint after" <<<"$started"

echo "== removing"
cleanup
trap - EXIT
[ ! -e /usr/bin/tarvane ] || fail "/usr/bin/tarvane is still there after removal"
echo "package test passed"
