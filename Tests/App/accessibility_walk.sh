#!/bin/sh
# accessibility_walk.sh QUORVEX MACHINE-FILE
# Walks the app over the accessibility bus, on a display, a bus and a home folder of its own.
set -eu

here=$(CDPATH= cd -- "$(dirname -- "$0")" && pwd)
if [ "${QUORVEX_WALK_INSIDE:-}" != yes ]; then
  export QUORVEX_WALK_INSIDE=yes
  exec "$here/../../scripts/on-display" "$here/accessibility_walk.sh" "$@"
fi

/usr/libexec/at-spi-bus-launcher --launch-immediately &
launcher=$!
trap 'kill "$launcher" 2>/dev/null || true' EXIT
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QUORVEX_MACHINE="$2"
/usr/bin/python3 "$here/accessibility_walk.py" "$1"
