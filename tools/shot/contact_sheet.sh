#!/usr/bin/env bash
# Draws every track of a game folder from the one overview camera and puts the
# pictures side by side on one sheet, each labelled with its number and name:
# a sheet row a zone, the start of every track at the top left of its picture.
#
#   tools/shot/contact_sheet.sh [GAME_DIR [OUT_DIR]]
#
# GAME_DIR defaults to build-test/game, OUT_DIR to GAME_DIR/../contact-sheet;
# the sheet is OUT_DIR/sheet.png, the single pictures OUT_DIR/NN.png. Needs a
# display (e.g. `Xvfb :99 & export DISPLAY=:99`) and ImageMagick's montage.
# TILE (default 384x288) and COLUMNS (default 10) change the layout.
set -euo pipefail
cd "$(dirname "$0")/../.."
game="$(realpath "${1:-build-test/game}")"
out="${2:-$game/../contact-sheet}"
tile="${TILE:-384x288}"
columns="${COLUMNS:-10}"
[ -n "${DISPLAY:-}" ] || { echo "contact_sheet: no DISPLAY (start Xvfb first)" >&2; exit 2; }
command -v montage >/dev/null || { echo "contact_sheet: montage (ImageMagick) is missing" >&2; exit 2; }
mkdir -p "$out"
out="$(realpath "$out")"

# The name of each track is its settings text, in track order.
mapfile -t names < <("$game/quorbit-track" dump "$game/levels.dat" | awk '
    /^track / { if (n) print name; n++; name = "" }
    /^  settings / && name == "" { s = $0; sub(/^  settings "/, "", s); sub(/" .*$/, "", s); name = s }
    END { if (n) print name }')
[ "${#names[@]}" -gt 0 ] || { echo "contact_sheet: no tracks in $game/levels.dat" >&2; exit 1; }

# ImageMagick's default font is often not installed; fontconfig knows one.
font=()
if command -v fc-match >/dev/null; then font=(-font "$(fc-match -f '%{file}' sans)"); fi

args=()
for i in "${!names[@]}"; do
    n=$((i + 1))
    file="$(printf '%s/%02d.png' "$out" "$n")"
    "$game/quorbit-shot" --game-dir "$game" --track "$n" --out "$file" --overview
    args+=(-label "$n  ${names[$i]}" "$file")
done
montage "${font[@]}" "${args[@]}" -tile "${columns}x" -geometry "${tile}+3+3" -background '#202428' -fill '#f0f0f0' \
    -pointsize 15 "$out/sheet.png"
echo "contact_sheet: ${#names[@]} tracks in $out/sheet.png"
