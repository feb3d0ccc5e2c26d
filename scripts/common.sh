# Shared by scripts/test and scripts/demo: installs the Debian packages the project needs.
NORVIK_PACKAGES=(cmake g++ ninja-build qt6-base-dev qt6-tools-dev libx11-dev xvfb xauth xcompmgr tango-icon-theme)

norvik_install_packages() {
    local missing=() p
    for p in "${NORVIK_PACKAGES[@]}" "$@"; do
        dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    echo "Installing: ${missing[*]}"
    $sudo apt-get update -qq
    $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}
