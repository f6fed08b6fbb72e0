#!/usr/bin/env bash
# Builds the fuzz targets and shares the given seconds (60) among them, each from its corpus in fuzz/corpus.
# A finding is left in build/fuzz as crash-*, and the script fails.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}

scripts/install-packages clang libclang-rt-14-dev
cmake --preset fuzz > /dev/null
cmake --build --preset fuzz -- --quiet
programs=()
for target in build/fuzz/fuzz/fuzz_*; do
  if [ -f "$target" ] && [ -x "$target" ]; then
    programs+=("$target")
  fi
done
each=$((seconds / ${#programs[@]}))
for program in "${programs[@]}"; do
  name=$(basename "$program" | sed 's/^fuzz_//')
  found=build/fuzz/found/$name
  mkdir -p "$found"
  echo "-- $name: $each seconds"
  "$program" -max_total_time="$each" -timeout=10 -rss_limit_mb=2048 -verbosity=0 -print_final_stats=1 \
    -artifact_prefix=build/fuzz/crash- "$found" "fuzz/corpus/$name" 2>&1 | tail -n 12
done
