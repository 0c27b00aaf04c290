#!/bin/sh
# accessibility_walk.sh QUORVEX MACHINE-FILE
# Walks the app over the accessibility bus, on a display, a bus and a home folder of its own.
set -eu

here=$(CDPATH= cd -- "$(dirname -- "$0")" && pwd)
if [ "${QUORVEX_WALK_INSIDE:-}" != yes ]; then
  home=$(mktemp -d)
  display=
  trap 'kill $display 2>/dev/null || true; rm -rf "$home"' EXIT
  mkdir -m 700 "$home/run"
  # The server itself chooses a free number and says it when it is ready; -noreset keeps it there
  # between two clients.
  mkfifo "$home/number"
  Xvfb -displayfd 3 -screen 0 1280x1024x24 -nolisten tcp -ac -noreset 3>"$home/number" 2>/dev/null &
  display=$!
  read -r number <"$home/number"
  export DISPLAY=":$number" HOME="$home" XDG_DATA_HOME="$home/data" XDG_CONFIG_HOME="$home/config" \
    XDG_CACHE_HOME="$home/cache" XDG_RUNTIME_DIR="$home/run" QUORVEX_WALK_INSIDE=yes
  dbus-run-session -- "$0" "$@"
  exit
fi

/usr/libexec/at-spi-bus-launcher --launch-immediately &
launcher=$!
trap 'kill "$launcher" 2>/dev/null || true' EXIT
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QUORVEX_MACHINE="$2" LC_ALL=C.UTF-8
unset QT_QPA_PLATFORM
/usr/bin/python3 "$here/accessibility_walk.py" "$1"
