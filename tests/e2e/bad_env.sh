#!/usr/bin/env bash
# The real game on a machine that lacks something: no display, no OpenGL, no
# sound device, no fonts, damaged pictures and models. Each case must end as
# docs/robustness.md says: explained, and either going on or stopping cleanly.
# Usage: tests/e2e/bad_env.sh BUILD_DIR
set -euo pipefail
build="$(cd "${1:?usage: bad_env.sh BUILD_DIR}" && pwd)"
work="$(mktemp -d /tmp/quorbit-badenv.XXXXXX)"
pids=()
cleanup() { for p in "${pids[@]}"; do kill "$p" 2>/dev/null || true; done; }
trap cleanup EXIT
fail() { echo "bad-env: FAILED: $*" >&2; exit 1; }

fresh() {  # a fresh game folder: links to the built assets, own files
  local g="$work/$1"
  mkdir -p "$g"
  for e in "$build/game"/*; do
    case "$(basename "$e")" in options.dat|stats.dat|Debug.txt) ;; *) ln -s "$e" "$g/" ;; esac
  done
  # The game finds its folder from its own executable: copy it, not a link.
  for f in levels.dat quorbit quorbit-shot; do rm "$g/$f" && cp "$build/game/$f" "$g/"; done
  echo "$g"
}
start_x() {  # start_x DISPLAY [Xvfb options]
  local d="$1"; shift
  Xvfb "$d" -screen 0 1024x768x24 -nolisten tcp -noreset "$@" >/dev/null 2>&1 &
  pids+=($!)
  for _ in $(seq 50); do DISPLAY="$d" xdpyinfo >/dev/null 2>&1 && return 0; sleep 0.1; done
  fail "Xvfb $d did not start"
}
# run_until_closed GAMEDIR DISPLAY [env...]: starts the game, closes it after
# a few seconds, and prints its exit code.
run_until_closed() {
  local g="$1" d="$2"; shift 2
  (cd "$g" && exec env DISPLAY="$d" "$@" ./quorbit) >"$g/out.log" 2>&1 &
  local p=$!
  sleep 5
  DISPLAY="$d" xdotool search --name Quorbit windowclose >/dev/null 2>&1 || kill "$p" 2>/dev/null || true
  local code=0
  wait "$p" || code=$?
  echo "$code"
}
log_has() { tr -d '\r' <"$1/Debug.txt" | grep -qF "$2" || fail "$1/Debug.txt lacks $2"; }

echo "bad-env: no display"
g=$(fresh nodisplay)
code=0
(cd "$g" && env -u DISPLAY -u WAYLAND_DISPLAY ./quorbit) >"$g/out.log" 2>&1 || code=$?
[ "$code" -ne 0 ] || fail "without a display the game must end with an error code"
grep -q "no display" "$g/out.log" || fail "no word about the display: $(cat "$g/out.log")"
log_has "$g" '"Initalise DirectX and DX3D = False"'

echo "bad-env: no OpenGL"
start_x :61 -extension GLX
g=$(fresh nogl)
# The explanation comes in a message box: it waits for the player's OK.
(cd "$g" && exec env DISPLAY=:61 ./quorbit) >"$g/out.log" 2>&1 &
p=$!
sleep 4
# Click its OK button, centred at the bottom of the box.
geometry=$(DISPLAY=:61 xwininfo -root -tree | grep '"Quorbit"' | grep -oE '[0-9]+x[0-9]+\+[0-9]+\+[0-9]+' | head -1)
[ -n "$geometry" ] || fail "no message box explains the missing OpenGL"
IFS='x+' read -r bw bh bx by <<<"$geometry"
DISPLAY=:61 xdotool mousemove $(( bx + bw / 2 )) $(( by + bh - 28 )) click 1
sleep 1
kill -0 "$p" 2>/dev/null && fail "the message box did not let the game end"
code=0
wait "$p" || code=$?
[ "$code" -ne 0 ] || fail "without OpenGL the game must end with an error code"
log_has "$g" '"Initalise DirectX and DX3D = False"'
grep -q "OpenGL\|3D" "$g/out.log" || fail "no word about OpenGL: $(cat "$g/out.log")"

start_x :62
echo "bad-env: no sound device"
g=$(fresh nosound)
code=$(run_until_closed "$g" :62 SDL_AUDIODRIVER=nosuchdevice)
[ "$code" -eq 0 ] || fail "without sound the game must run and end normally (code $code)"
log_has "$g" '"Initalise DirectSound = False"'
log_has "$g" '"Initalise DirectX and DX3D = True"'

echo "bad-env: no fonts"
g=$(fresh nofont)
printf '<?xml version="1.0"?>\n<!DOCTYPE fontconfig SYSTEM "fonts.dtd">\n<fontconfig><dir>%s/empty</dir><cachedir>%s/cache</cachedir></fontconfig>\n' \
  "$work" "$work" >"$work/fonts.conf"
mkdir -p "$work/empty"
code=$(run_until_closed "$g" :62 FONTCONFIG_FILE="$work/fonts.conf" SDL_AUDIODRIVER=dummy)
[ "$code" -eq 0 ] || fail "without fonts the game must run and end normally (code $code)"

echo "bad-env: damaged pictures and models"
g=$(fresh damaged)
for d in textures backgrounds models skins misc; do rm "$g/$d" && cp -r "$build/game/$d" "$g/$d"; done
printf 'BM not a bitmap' >"$g/textures/road.bmp"
head -c 5000 /dev/urandom >"$g/backgrounds/_default.jpg"
printf 'xof 0303txt 0032\n{{{{' >"$g/models/orb.x"
printf 'garbage' >"$g/models/player.x"
: >"$g/skins/player.bmp"
: >"$g/misc/shadowimage.bmp"
code=$(run_until_closed "$g" :62 SDL_AUDIODRIVER=dummy)
[ "$code" -eq 0 ] || fail "damaged dressing must not stop the game (code $code)"
DISPLAY=:62 "$g/quorbit-shot" --game-dir "$g" --track 1 --out "$work/damaged.png" >/dev/null 2>&1 ||
  fail "quorbit-shot could not draw track 1 with damaged pictures"
[ -s "$work/damaged.png" ] || fail "no picture of the damaged track"

echo "bad-env: passed"
rm -rf "$work"
