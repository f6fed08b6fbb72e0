#!/usr/bin/env bash
# Installs what is missing, builds the release preset and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages chromium
cmake --preset release > /dev/null
cmake --build --preset release -- --quiet
ctest --preset release -j "$(nproc)"
