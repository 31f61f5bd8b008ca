#!/bin/sh
# Installs the build into a fresh prefix and uses it as a host program's author would: the C
# test program is compiled against the installed header and pkg-config file, linked with the
# installed libmarlet.so, and run on a database the installed marlet made.
#   install-check.sh BUILD_DIR LIBDIR CAPI_SOURCE C_COMPILER [LINK_FLAG]
# LINK_FLAG links the program to the sanitizers' runtime when the library was built with them.
set -eu
build=$1 libdir=$2 source=$3 cc=$4 link_flag=${5:-}
prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT
cmake --install "$build" --prefix "$prefix" >/dev/null

for file in bin/marlet "$libdir/libmarlet.so" "$libdir/libmarlet.so.2" include/marlet/marlet.h \
    "$libdir/pkgconfig/marlet.pc" share/man/man1/marlet.1 share/applications/marlet.desktop \
    share/icons/hicolor/scalable/apps/marlet.svg; do
    [ -e "$prefix/$file" ] || { echo "not installed: $file"; exit 1; }
done
soname=$(objdump -p "$prefix/$libdir/libmarlet.so" | awk '/SONAME/ { print $2 }')
[ "$soname" = libmarlet.so.2 ] || { echo "soname is '$soname', not libmarlet.so.2"; exit 1; }
if command -v man >/dev/null; then
    man -l "$prefix/share/man/man1/marlet.1" 2>/dev/null | grep -q "load-gen-acc" || {
        echo "the manual page does not render the commands"
        exit 1
    }
fi

"$prefix/bin/marlet" --version
export PKG_CONFIG_PATH="$prefix/$libdir/pkgconfig"
# shellcheck disable=SC2046
"$cc" -std=c11 -Wall -Wextra -Werror $(pkg-config --cflags marlet) "$source" $(pkg-config --libs marlet) \
    $link_flag -o "$prefix/capi_test"
mkdir "$prefix/work"
"$prefix/bin/marlet" init --db "$prefix/work/cafe.db" --admin-password ADMIN --app-dir "$prefix/work" >/dev/null
LD_LIBRARY_PATH="$prefix/$libdir" "$prefix/capi_test" "$prefix/work/cafe.db" "$prefix/work" </dev/null
