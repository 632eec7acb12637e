# Debian packages. Sourced by ./run and ./check: install_packages installs what is missing.

BUILD_PACKAGES="cmake ninja-build g++ ccache qt6-base-dev qt6-svg-dev qt6-serialport-dev libmosquitto-dev libgl-dev libegl-dev libsqlite3-dev libutf8proc-dev libssl-dev
 libcli11-dev nlohmann-json3-dev libcsv-dev libfast-float-dev libhowardhinnant-date-dev libicu-dev zlib1g-dev tzdata fonts-dejavu-core python3"
CHECK_PACKAGES="libgtest-dev libgmock-dev libbenchmark-dev clang-format-14 clang-tidy-14 git poppler-utils
 mosquitto socat man-db zsh fish desktop-file-utils"
# What the installed program needs to run on a bare system; windows need a display besides.
RUNTIME_PACKAGES="libqt6svg6 libqt6printsupport6 libqt6serialport6 libmosquitto1 libqt6widgets6 libsqlite3-0 libutf8proc2 libicu72 libdate-tz3 libcsv3
 libssl3 zlib1g tzdata fonts-dejavu-core"
# What shows windows without a screen, for tests and for the picture of the program.
SCREEN_PACKAGES="xvfb xauth openbox xdotool imagemagick poppler-utils"

# install_packages NAME...: quietly does nothing where all are there; asks for nothing.
install_packages() {
    local missing="" name
    for name in "$@"; do
        dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing="$missing $name"
    done
    [ -z "$missing" ] && return 0
    local as_root=""
    if [ "$(id -u)" -ne 0 ]; then
        if ! sudo -n true 2>/dev/null; then
            echo "Missing packages. Install them as root, then run this again:" >&2
            echo "  apt-get install --no-install-recommends$missing" >&2
            return 1
        fi
        as_root="sudo -n"
    fi
    echo "Installing:$missing" >&2
    # Another package manager may hold the lock: wait for it.
    local apt="$as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300"
    $apt update >/dev/null || echo "The package lists could not be renewed; trying with the present ones." >&2
    # shellcheck disable=SC2086
    $apt install -y --no-install-recommends $missing >/dev/null
}
