#!/bin/sh
# The scanner front end with stand-ins for scanimage and xclip: it says clearly when there is no
# scanner, and puts a scanned image on the clipboard when there is one.
set -u
front_end=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0
fail() { echo "FAIL: $1"; failures=$((failures + 1)); }
base=/usr/bin:/bin

# No scanimage at all.
mkdir "$work/none"
out=$(PATH="$work/none:$base" DISPLAY= "$front_end" 2>&1); status=$?
[ "$status" = 1 ] || fail "without scanimage the status is $status"
case "$out" in *"scanimage is not installed"*) ;; *) fail "without scanimage: $out" ;; esac

# scanimage present, no device.
mkdir "$work/nodevice"
printf '#!/bin/sh\nexit 0\n' >"$work/nodevice/scanimage"
chmod +x "$work/nodevice/scanimage"
out=$(PATH="$work/nodevice:$base" DISPLAY= SANE_DEFAULT_DEVICE= "$front_end" 2>&1); status=$?
[ "$status" = 1 ] || fail "without a device the status is $status"
case "$out" in *"No scanner was found"*) ;; *) fail "without a device: $out" ;; esac

# A scanner and a clipboard: the image reaches xclip as PNG.
mkdir "$work/scanner"
cat >"$work/scanner/scanimage" <<'SCAN'
#!/bin/sh
case "$1" in -f) echo "test:0"; exit 0 ;; esac
printf 'PNGIMAGE'
SCAN
cat >"$work/scanner/xclip" <<CLIP
#!/bin/sh
echo "\$*" >"$work/xclip-args"
for argument; do file=\$argument; done
cat "\$file" >"$work/clipboard"
CLIP
chmod +x "$work/scanner/scanimage" "$work/scanner/xclip"
out=$(PATH="$work/scanner:$base" DISPLAY= WAYLAND_DISPLAY= "$front_end" 2>&1); status=$?
[ "$status" = 0 ] || fail "with a scanner the status is $status: $out"
[ "$(cat "$work/clipboard" 2>/dev/null)" = PNGIMAGE ] || fail "the clipboard did not get the image"
grep -q "image/png" "$work/xclip-args" 2>/dev/null || fail "the clipboard was not told the image is PNG"

if [ "$failures" = 0 ]; then echo "7 passed, 0 failed"; else echo "$((7 - failures)) passed, $failures failed"; exit 1; fi
