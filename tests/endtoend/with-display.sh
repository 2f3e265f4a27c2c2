#!/usr/bin/env bash
# Runs a command, its arguments, on a virtual display with a window manager; its status is this
# script's.
set -euo pipefail
# shellcheck source=script/lib/headless.sh
. "$(dirname "$0")/../../script/lib/headless.sh"

headless_begin
headless_start_xvfb
headless_start_openbox
"$@"
