#!/usr/bin/env bash
# Installs what is missing, builds the program, exports the example scenes, and says where the files are and what
# is in them.
set -euo pipefail
cd "$(dirname "$0")/.."

scripts/install-packages
cmake --preset release > /dev/null
cmake --build --preset release --target zyrexport -- --quiet

program=build/release/zyrexport
out=out/demo
rm -rf "$out"
mkdir -p "$out/game" "$out/config"

for scene in examples/*.scene.json; do
  echo
  echo "== $scene"
  status=0
  "$program" export "$scene" --resource-root "$out/game" --config "$out/config" \
    --report "$out/$(basename "$scene" .scene.json).report.json" || status=$?
  # 3 tells that the artist has something to mend in the scene; anything else is a failure of the program.
  [ "$status" -eq 0 ] || [ "$status" -eq 3 ]
done

echo
echo "== What is in the files"
"$program" inspect "$out/game/units/tank"
echo "The resource tree is in $out/game, a report of each run beside it:"
find "$out" -type f | sort
