#!/usr/bin/env bash
# Builds the fuzz targets and shares the given seconds (60) among them, each from its corpus in fuzz/corpus. They
# try the same inputs in each run, so that a change is judged by what it changes; another seed tries others.
# A finding is left in build/asan-ubsan as crash-*, and the script fails.
# Usage: scripts/fuzz.sh [seconds [seed]]
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
seed=${2:-1}
build=build/asan-ubsan

scripts/install-packages clang libclang-rt-14-dev
cmake --preset asan-ubsan > /dev/null
# What fuzz_fbx finds is mostly the import library's own; it is run by hand, with tests/standalone/foreign as corpus.
shopt -s extglob
targets=(fuzz/fuzz_!(fbx).cpp)
targets=("${targets[@]##*/}")
cmake --build --preset asan-ubsan --target "${targets[@]%.cpp}" -- --quiet
programs=()
for target in $build/fuzz/fuzz_!(fbx); do
  if [ -f "$target" ] && [ -x "$target" ]; then
    programs+=("$target")
  fi
done
each=$((seconds / ${#programs[@]}))
for program in "${programs[@]}"; do
  name=$(basename "$program" | sed 's/^fuzz_//')
  found=$build/found/$name
  mkdir -p "$found"
  echo "-- $name: $each seconds"
  "$program" -max_total_time="$each" -timeout=10 -rss_limit_mb=2048 -verbosity=0 -print_final_stats=1 \
    -seed="$seed" -artifact_prefix=$build/ "$found" "fuzz/corpus/$name" 2>&1 | tail -n 12
done
