#!/usr/bin/env bash
# What the real game costs on this machine: it starts quorbit in a virtual
# display (Xvfb, 1024x768, Mesa's software OpenGL), waits at the main menu,
# goes into track 1 with real key presses and drives it, and prints per run
# the CPU share of one core at the idle menu and in play, the frames shown
# per second in each, and the peak resident memory; then min/median/max.
# Usage: bench/display_bench.sh [BUILD_DIR] [RUNS]
#   DISPLAY_NUM (default 18) picks the Xvfb display; SMOOTH=0 or 1 writes
#   that choice into settings.cfg before the runs (unset leaves the default);
#   GHOST=1 or 0 keeps track 1's best run (its solution, recorded by
#   quorbit-sim --save-replay) so that play races its ghost, or keeps it
#   with the ghost switched off in settings.cfg (unset: no best run at all);
#   BENCH_SHOTS=DIR keeps a screenshot of the menu and of play from each run.
set -euo pipefail
build="$(cd "${1:-build}" && pwd)"
runs="${2:-5}"
here="$(cd "$(dirname "$0")" && pwd)"
work="$(mktemp -d /tmp/quorbit-bench.XXXXXX)"
display=":${DISPLAY_NUM:-18}"
menu_secs=6
play_secs=6

cc -shared -fPIC -O2 -o "$work/swap_counter.so" "$here/swap_counter.c" -ldl

Xvfb "$display" -screen 0 1024x768x24 -nolisten tcp -noreset >/dev/null 2>&1 &
xvfb=$!
pid=""
cleanup() {
  [ -n "$pid" ] && kill "$pid" 2>/dev/null || true
  kill "$xvfb" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
export DISPLAY="$display" SDL_AUDIODRIVER=dummy
for _ in $(seq 50); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done

hz=$(getconf CLK_TCK)
cpu_ticks() { awk '{print $14 + $15}' "/proc/$pid/stat"; }
swaps() { od -An -t u8 "$work/swaps" 2>/dev/null | tr -d ' ' || echo 0; }
now() { date +%s.%N; }
press() { xdotool keydown "$1"; sleep 0.15; xdotool keyup "$1"; sleep "${2:-0.5}"; }
# CPU % of one core and frames per second over the next $1 seconds.
measure() {
  local t0 c0 f0 t1 c1 f1
  t0=$(now); c0=$(cpu_ticks); f0=$(swaps)
  sleep "$1"
  t1=$(now); c1=$(cpu_ticks); f1=$(swaps)
  awk -v c="$((c1 - c0))" -v f="$((f1 - f0))" -v t0="$t0" -v t1="$t1" -v hz="$hz" \
    'BEGIN { printf "%.1f %.1f\n", 100 * c / hz / (t1 - t0), f / (t1 - t0) }'
}

results="$work/results"
: >"$results"
for run in $(seq "$runs"); do
  game="$work/game"
  rm -rf "$game"
  cp -r "$build/game" "$game"
  rm -rf "$game"/replays
  rm -f "$game"/options.dat "$game"/stats.dat "$game"/Debug.txt "$game"/settings.cfg
  [ -n "${SMOOTH:-}" ] && printf 'smooth_motion = %s\n' "$([ "$SMOOTH" = 1 ] && echo on || echo off)" \
    >"$game/settings.cfg"
  if [ -n "${GHOST:-}" ]; then
    mkdir -p "$game/replays"
    "$build/game/quorbit-sim" --game-dir "$build/game" --track 1 --keys "$here/../content/solutions/01.keys" \
      --save-replay "$game/replays/track-01-best.replay" >/dev/null
    [ "$GHOST" = 1 ] || printf 'race.ghost = off\n' >>"$game/settings.cfg"
  fi
  rm -f "$work/swaps"
  (cd "$game" && SWAP_COUNTER_FILE="$work/swaps" LD_PRELOAD="$work/swap_counter.so" exec ./quorbit) \
    >"$work/game.log" 2>&1 &
  pid=$!
  win=$(xdotool search --sync --name Quorbit | head -1)
  sleep 4
  # Xvfb has no window manager, so the full-screen window keeps its first
  # size; give it the screen as a window manager would.
  xdotool windowsize "$win" 1024 768 windowmove "$win" 0 0
  sleep 1
  # The pointer rests away from every button, as a player's would.
  xdotool mousemove 1 1
  sleep 1
  read -r menu_cpu menu_fps < <(measure "$menu_secs")
  [ -n "${BENCH_SHOTS:-}" ] && import -window root "$BENCH_SHOTS/menu-$run.png"
  press Return 1   # PLAY: the zone choice
  press Return 1.5 # zone A: the track choice with track 1
  press Return 1   # start track 1
  xdotool keydown Up
  sleep 1
  read -r play_cpu play_fps < <(measure "$play_secs")
  [ -n "${BENCH_SHOTS:-}" ] && import -window root "$BENCH_SHOTS/play-$run.png"
  xdotool keyup Up
  rss=$(awk '/^VmHWM/ {printf "%.1f", $2 / 1024}' "/proc/$pid/status")
  kill -0 "$pid" || { echo "the game ended early: $(cat "$work/game.log")" >&2; exit 1; }
  xdotool search --name Quorbit windowclose >/dev/null 2>&1 || kill "$pid"
  wait "$pid" || true
  pid=""
  printf 'run %d: idle menu %5.1f %% CPU %6.1f fps | play %5.1f %% CPU %6.1f fps | peak RSS %6.1f MiB\n' \
    "$run" "$menu_cpu" "$menu_fps" "$play_cpu" "$play_fps" "$rss"
  echo "$menu_cpu $menu_fps $play_cpu $play_fps $rss" >>"$results"
done

stat() { # column -> "min / median / max"
  cut -d' ' -f"$1" "$results" | sort -g | awk '{ v[NR] = $1 } END {
    m = (NR % 2) ? v[(NR + 1) / 2] : (v[NR / 2] + v[NR / 2 + 1]) / 2
    printf "%.1f / %.1f / %.1f", v[1], m, v[NR] }'
}
echo "min / median / max of $runs runs at 1024x768:"
echo "  idle menu CPU (% of a core): $(stat 1)"
echo "  idle menu frames per second: $(stat 2)"
echo "  play CPU (% of a core):      $(stat 3)"
echo "  play frames per second:      $(stat 4)"
echo "  peak resident memory (MiB):  $(stat 5)"
