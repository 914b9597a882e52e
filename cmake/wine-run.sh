#!/usr/bin/env bash
# Runs a Windows executable under Wine with a private prefix inside the build
# tree, created on first use. The prefix selects Wine's null graphics driver, so
# dialogs need no X server. ZX_WINE_X11=1 uses a second prefix that keeps the
# default (x11) driver, for screenshots under xvfb-run.
set -euo pipefail
exe=$1; shift
build_dir=$(cd "$(dirname "$exe")/.." && pwd)
wine=/usr/lib/wine/wine64
[ -x "$wine" ] || wine=$(command -v wine64 || command -v wine)
wineserver=$(dirname "$wine")/wineserver
[ -x "$wineserver" ] || wineserver=$(command -v wineserver)

if [ "${ZX_WINE_X11:-0}" = 1 ]; then
  export WINEPREFIX="$build_dir/wineprefix-x11"
else
  export WINEPREFIX="$build_dir/wineprefix"
fi
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml="

# One prefix initialisation at a time (ctest may run executables in parallel).
exec 9>"$build_dir/.wineprefix.lock"
flock 9
if [ ! -f "$WINEPREFIX/.zx-ready" ]; then
  mkdir -p "$WINEPREFIX"
  "$wine" wineboot -i </dev/null >/dev/null 2>&1 || true
  if [ "${ZX_WINE_X11:-0}" != 1 ]; then
    "$wine" reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f </dev/null >/dev/null 2>&1
  fi
  "$wineserver" -w
  touch "$WINEPREFIX/.zx-ready"
fi
# The CJK dialogs name the fonts those Windows versions ship; here they are
# drawn with the CJK font of Debian's fonts-wqy-microhei.
if [ ! -f "$WINEPREFIX/.zx-cjk-fonts-2" ]; then
  for face in "Meiryo UI" "Malgun Gothic" "Microsoft YaHei UI"; do
    "$wine" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$face" /d "WenQuanYi Micro Hei" /f \
      </dev/null >/dev/null 2>&1
  done
  touch "$WINEPREFIX/.zx-cjk-fonts-2"
fi
# Bring the wine session (server, services, desktop) up with its output detached,
# so that those long-lived processes neither hold the caller's pipes open nor
# race the first window the test creates. The server lingers briefly between
# executables to spare the start-up.
"$wineserver" -p 15 </dev/null >/dev/null 2>&1 || true
"$wine" cmd /c exit </dev/null >/dev/null 2>&1 || true
flock -u 9
[ "${ZX_WINE_INIT_ONLY:-0}" = 1 ] && exit 0
exec "$wine" "$exe" "$@"
