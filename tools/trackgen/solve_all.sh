#!/bin/sh
# Regenerates the tracks, builds them and writes every solution script.
# usage: tools/trackgen/solve_all.sh BUILD_DIR   (quorbit-track, -solve and the content built there)
set -e
repo=$(cd "$(dirname "$0")/../.." && pwd)
game=$(cd "$1/game" && pwd)
stage=$(mktemp -d)
trap 'rm -rf "$stage"' EXIT
python3 "$repo/tools/trackgen/make_tracks.py" "$repo"
for f in "$game"/*; do [ "$(basename "$f")" = levels.dat ] || ln -s "$f" "$stage/"; done
"$game/quorbit-track" build -o "$stage/levels.dat" "$repo"/content/tracks/*.trk > /dev/null
for n in $(seq 1 60); do
  nn=$(printf %02d "$n")
  "$game/quorbit-solve" --game-dir "$stage" --track "$n" --route "$repo/content/solutions/$nn.plan" \
    --out "$repo/content/solutions/$nn.keys"
done
for src in "$repo"/content/usertracks/*.trk; do
  stem=$(basename "$src" .trk)
  [ -f "$repo/content/solutions/user_$stem.plan" ] || continue
  "$game/quorbit-track" build -o "$stage/$stem.dat" "$src" > /dev/null
  "$game/quorbit-solve" --game-dir "$stage" --levels "$stage/$stem.dat" --track 1 \
    --route "$repo/content/solutions/user_$stem.plan" --out "$repo/content/solutions/user_$stem.keys"
done
