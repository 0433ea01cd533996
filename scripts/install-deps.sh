#!/usr/bin/env bash
# Installs the Debian packages the build needs, but only those that are missing.
# Runs apt-get as root, or through sudo when we are not root.
set -euo pipefail

# dpkg-dev and file: CPack works out the package's dependencies with dpkg-shlibdeps; groff-base
# checks the manual pages.
packages=(cmake ninja-build g++ make qt6-base-dev qt6-svg-dev libgl-dev fonts-dejavu-core clang-format dpkg-dev file groff-base)
if [ "${1:-}" = "--ci" ]; then
    # The sanitizer build and the fuzzer need clang with its runtime.
    packages+=(clang libclang-rt-14-dev)
fi

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing missing packages: ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
    if command -v sudo >/dev/null 2>&1; then
        sudo_cmd=(sudo)
    else
        echo "These packages are missing and we are not root (no sudo either): ${missing[*]}" >&2
        exit 1
    fi
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
