#!/bin/sh
# Builds the fuzz targets in BUILD_DIR (configuring it with clang when it is
# new) and runs each for SECONDS, seeded from the shipped tracks, then each
# for QUORBIT_FUZZ_LARGE_SECONDS (default 5) on inputs of megabytes under a
# memory limit. Fails on the first finding.
set -eu
if [ $# -ne 2 ]; then
  echo "usage: fuzz/run.sh BUILD_DIR SECONDS" >&2
  exit 2
fi
mkdir -p "$1"
build=$(cd "$1" && pwd)  # the runs below change folder
seconds=$2
src=$(cd "$(dirname "$0")/.." && pwd)

if [ ! -f "$build/CMakeCache.txt" ]; then
  CC=clang CXX=clang++ cmake -S "$src" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUORBIT_FUZZ=ON -DQUORBIT_TESTS=OFF -DQUORBIT_BENCH=OFF
fi
cmake --build "$build" --target fuzz

# Seeds: the shipped track sources, and levels.dat built from them.
seeds=$build/fuzz/seeds
rm -rf "$seeds"
mkdir -p "$seeds/levels_dat" "$seeds/track_source" "$seeds/options_dat" "$seeds/stats_dat" "$seeds/settings_cfg" \
  "$seeds/replay"
cp "$src"/content/tracks/*.trk "$src"/content/usertracks/*.trk "$seeds/track_source/"
i=0
for t in "$src"/content/tracks/*.trk "$src"/content/usertracks/*.trk; do
  i=$((i + 1))
  "$build/fuzz/fuzz_make_seed" "$seeds/levels_dat/seed$i.dat" "$t"
done
printf '\062\000\000\000\030\374\377\377\001\000\000\000' > "$seeds/options_dat/seed"
printf '# keys\nkeys.jump = 57\nrace.ghost = true\nname = Zo\303\253\n' > "$seeds/settings_cfg/seed"
printf '\003\000\020\047\000\000\001\000\000\000\002\000\000\000' > "$seeds/stats_dat/seed"
printf 'quorbit-replay 1\nfile levels.dat\ntrack 2\ntrack-hash 0123456789abcdef\nframes 9\ntime 0:36\nstars 1/3\ndriver ANNA\ndate 2026-11-23\nkeys\n3 Up\n2 Up+Space\n1 Left+Down\n4 -\n' > "$seeds/replay/seed"

status=0
for name in levels_dat options_dat settings_cfg stats_dat track_source replay; do
  corpus=$build/fuzz/corpus/$name
  mkdir -p "$corpus"
  echo "fuzz_$name: $seconds s"
  if ! (cd "$build/fuzz" && ASAN_OPTIONS=detect_leaks=1 "./fuzz_$name" -max_total_time="$seconds" \
        -rss_limit_mb=2048 -malloc_limit_mb=512 -timeout=10 -print_final_stats=0 \
        "$corpus" "$seeds/$name" >"$build/fuzz/$name.log" 2>&1); then
    echo "fuzz_$name found a problem; see $build/fuzz/$name.log" >&2
    tail -n 40 "$build/fuzz/$name.log" >&2
    status=1
  fi
done

# Large inputs under a memory limit: megabytes of tracks, lines and keys,
# where every mutation may use the whole length. A reader whose memory grows
# faster than its input (a size taken from a claim, a name kept many times
# over) runs into the limits, and libFuzzer reports that as a finding.
large=${QUORBIT_FUZZ_LARGE_SECONDS:-5}
big=$build/fuzz/seeds-large
rm -rf "$big"
mkdir -p "$big/levels_dat" "$big/track_source" "$big/options_dat" "$big/stats_dat" "$big/settings_cfg" "$big/replay"
set --
for i in 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16; do set -- "$@" "$src"/content/tracks/*.trk; done
"$build/fuzz/fuzz_make_seed" "$big/levels_dat/tracks.dat" "$@"  # 960 tracks
for i in 1 2 3 4 5 6 7 8; do cat "$src"/content/tracks/*.trk; done > "$big/track_source/many.trk"
head -c 3000000 /dev/zero > "$big/options_dat/zeros"
head -c 3000000 /dev/zero > "$big/stats_dat/zeros"
yes 'keys.jump = 57' | head -n 200000 > "$big/settings_cfg/lines"
{ printf 'quorbit-replay 1\nfile levels.dat\ntrack 2\ntrack-hash 0123456789abcdef\nframes 9\ntime 0:36\n'
  printf 'stars 1/3\ndriver ANNA\ndate 2026-11-23\nkeys\n'; yes '1 Up' | head -n 200000; } > "$big/replay/long"
for name in levels_dat options_dat settings_cfg stats_dat track_source replay; do
  corpus=$build/fuzz/corpus-large/$name
  rm -rf "$corpus"
  mkdir -p "$corpus"
  echo "fuzz_$name, large inputs: $large s"
  if ! (cd "$build/fuzz" && ASAN_OPTIONS=detect_leaks=1:quarantine_size_mb=16 "./fuzz_$name" \
        -max_total_time="$large" -max_len=4194304 -len_control=0 -rss_limit_mb=512 -malloc_limit_mb=64 \
        -timeout=20 -print_final_stats=0 "$corpus" "$big/$name" >"$build/fuzz/$name-large.log" 2>&1); then
    echo "fuzz_$name found a problem with large inputs; see $build/fuzz/$name-large.log" >&2
    tail -n 40 "$build/fuzz/$name-large.log" >&2
    status=1
  fi
  rm -rf "$corpus"
done
exit $status
