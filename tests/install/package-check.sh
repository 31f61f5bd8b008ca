#!/bin/sh
# Builds the Debian package, installs it with apt, runs the installed marlet and removes the
# package again. Changes the machine, so it runs only as root (as in CI) and is skipped otherwise.
#   package-check.sh BUILD_DIR
set -eu
build=$1
if [ "$(id -u)" -ne 0 ]; then
    echo "skipped: installing a package needs root"
    exit 77
fi
if dpkg-query -W -f='${Status}' marlet 2>/dev/null | grep -q "install ok installed"; then
    echo "skipped: a marlet package is installed already; this check would replace it"
    exit 77
fi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
(cd "$build" && cpack -G DEB -B "$work/package" >/dev/null)
deb=$(ls "$work"/package/marlet_*.deb)
dpkg-deb --info "$deb" | grep -q "Depends: .*libqt6core6" || { echo "the package names no Qt dependency"; exit 1; }
DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "$deb" >/dev/null
trap 'DEBIAN_FRONTEND=noninteractive apt-get remove -y -qq marlet >/dev/null 2>&1 || true; rm -rf "$work"' EXIT
/usr/bin/marlet --version | grep -q "^marlet " || { echo "the installed marlet gives no version"; exit 1; }
/usr/bin/marlet init --db "$work/cafe.db" --admin-password ADMIN --app-dir "$work/app" | grep -q "Database ready"
[ -e /usr/lib/libmarlet.so.2 ] || [ -n "$(ls /usr/lib/*/libmarlet.so.2 2>/dev/null)" ] || {
    echo "libmarlet.so.2 is not installed"
    exit 1
}
DEBIAN_FRONTEND=noninteractive apt-get remove -y -qq marlet >/dev/null
if [ -e /usr/bin/marlet ] || dpkg-query -W -f='${Status}' marlet 2>/dev/null | grep -q "install ok installed"; then
    echo "the package did not remove cleanly"
    exit 1
fi
echo "package installed, ran and removed cleanly: $(basename "$deb")"
