#!/usr/bin/env bash
# Installs what the browser tests are driven with into the folder $1, as package-lock.json has it.
set -euo pipefail
here=$(dirname "$(readlink -f "$0")")
cd "$1"
if cmp -s "$here/package-lock.json" installed.json; then
    exit 0
fi
cp "$here/package.json" "$here/package-lock.json" "$here/.npmrc" .
npm ci --no-progress
mv package-lock.json installed.json
