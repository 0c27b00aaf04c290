#!/bin/sh
# accessibility_walk.sh QUORVEX MACHINE-FILE
# Walks the app over the accessibility bus, on a display, a bus and a home folder of its own.
set -eu

here=$(CDPATH= cd -- "$(dirname -- "$0")" && pwd)
if [ "${QUORVEX_WALK_INSIDE:-}" != yes ]; then
  home=$(mktemp -d)
  trap 'rm -rf "$home"' EXIT
  mkdir -m 700 "$home/run"
  export HOME="$home" XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" \
    XDG_CACHE_HOME="$home/cache" XDG_RUNTIME_DIR="$home/run" QUORVEX_WALK_INSIDE=yes
  xvfb-run --auto-servernum --server-args="-screen 0 1280x1024x24" \
    dbus-run-session -- "$0" "$@"
  exit
fi

/usr/libexec/at-spi-bus-launcher --launch-immediately &
launcher=$!
trap 'kill "$launcher" 2>/dev/null || true' EXIT
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_QUICK_BACKEND=software QUORVEX_MACHINE="$2" LC_ALL=C.UTF-8
unset QT_QPA_PLATFORM
/usr/bin/python3 "$here/accessibility_walk.py" "$1"
