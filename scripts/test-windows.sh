#!/usr/bin/env bash
# Builds the Windows program and the plug-in module, and tests them under Wine on a screen of their own: the unit
# tests, the module and its dialog, faults, and the examples, whose files must be those of the build for this system.
# Keeps a picture of the dialog in build/windows/dialog.png.
set -euo pipefail
cd "$(dirname "$0")/.."

build=build/windows
modules=(platform base io export)

scripts/install-packages g++-mingw-w64-x86-64 libz-mingw-w64-dev googletest wine wine64 fonts-wine \
  fonts-dejavu-core xvfb xdotool imagemagick
cmake --preset release > /dev/null
cmake --build --preset release --target zyrexport
cmake --preset windows > /dev/null
cmake --build --preset windows --target zyrexport zyr_plugin desktop_tests "${modules[@]/%/_tests}"

# A screen, and a Wine of its own whose drive T: is the studio's share.
export WINEPREFIX=$PWD/$build/wine WINEARCH=win64 WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
scratch=$(mktemp -d)
Xvfb -displayfd 1 -screen 0 1024x768x24 > "$scratch/display" 2> /dev/null &
screen=$!
finish() {
  wineserver -k || true
  kill "$screen"
  rm -rf "$scratch"
}
trap finish EXIT
until [ -s "$scratch/display" ]; do
  kill -0 "$screen"
  sleep 0.1
done
DISPLAY=:$(cat "$scratch/display")
export DISPLAY
wineboot --init
# No window manager draws the frames of windows, so Wine does.
wine reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f > /dev/null
cp "$(dpkg -L fonts-wine | grep '/marlett.ttf$')" "$WINEPREFIX/drive_c/windows/Fonts/"
wineserver -w
mkdir -p "$scratch/share"
ln -sfn "$scratch/share" "$WINEPREFIX/dosdevices/t:"

echo "== The module exports its five functions and needs the system's libraries only"
objdump -p $build/ZyrExport2010_KSR.dle > "$scratch/headers"
sed -n '/\[Ordinal\/Name Pointer\] Table/,/^$/p' "$scratch/headers" | awk '/^\t\[/ {print $NF}' | sort > "$scratch/names"
printf '%s\n' CanAutoDefer LibClassDesc LibDescription LibNumberClasses LibVersion | diff - "$scratch/names"
for file in $build/ZyrExport2010_KSR.dle $build/zyrexport.exe; do
  objdump -p $file | awk '/DLL Name:/ {print tolower($3)}' | while read -r library; do
    [ -e "$WINEPREFIX/drive_c/windows/system32/$library" ] || { echo "$file needs $library"; exit 1; }
  done
done

for module in "${modules[@]}" desktop; do
  echo "== Tests of $module"
  wine $build/tests/"${module}"_tests.exe --gtest_brief=1
done

echo "== A picture of the dialog"
wine $build/zyrexport.exe export examples/tank.scene.json --plugin $build/ZyrExport2010_KSR.dle \
  --drive d="$scratch" --config "$scratch/config" > /dev/null &
program=$!
window=$(timeout 60 xdotool search --sync --onlyvisible --name '^ZYR Model Export$' | head -1)
xdotool windowfocus "$window"
sleep 1
import -window "$window" $build/dialog.png
xdotool key Escape
wait "$program"

echo "== The examples give the files that they give on this system"
# The tree of a run, with the comment lines of its models taken off: they tell who, when and from where.
export_tree() {
  local tree=$1
  shift
  rm -rf "$scratch/d"
  mkdir -p "$scratch/d/game"
  "$@" --config "$scratch/config" --quiet 2> "$scratch/messages" || [ $? -eq 3 ]
  find "$scratch/d" -name '*.mdl' -exec sed -i 1,3d {} +
  mv "$scratch/d" "$tree"
}
for scene in examples/*.scene.json; do
  rm -rf "$scratch"/{here,own,module}
  export_tree "$scratch/here" build/release/zyrexport export "$scene" --silent --drive d="$scratch/d"
  export_tree "$scratch/own" wine $build/zyrexport.exe export "$scene" --silent --drive d="$scratch/d"
  export_tree "$scratch/module" wine $build/zyrexport.exe export "$scene" --silent --drive d="$scratch/d" \
    --plugin $build/ZyrExport2010_KSR.dle
  diff -r "$scratch/here" "$scratch/own"
  diff -r "$scratch/here" "$scratch/module"
  echo "$scene: $(find "$scratch/here" -type f | wc -l) files"
done
echo "Windows tests passed"
