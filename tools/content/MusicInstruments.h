// The band that plays the game's music: a drum kit, a synth bass, a pad, a
// plucked arpeggio voice, a lead and a bell. Each call adds one note or hit
// into a stereo buffer at a sample position; notes past the end are cut.
#pragma once

#include <vector>

#include "tools/content/SoundSynth.h"

namespace qb::content::sound {

// Position on a 16th-note grid at a fixed tempo.
struct Grid {
    double bpm;
    double stepSeconds() const { return 15.0 / bpm; }
    size_t at(double steps) const { return Samples(steps * stepSeconds()); }
    double seconds(double steps) const { return steps * stepSeconds(); }
};

void Kick(Stereo& out, size_t at, float gain);
void Snare(Stereo& out, size_t at, float gain, Rng& rng);
void HiHat(Stereo& out, size_t at, float gain, double decaySeconds, float pan, Rng& rng);
void Crash(Stereo& out, size_t at, float gain, Rng& rng);

void BassNote(Stereo& out, size_t at, double seconds, int midi, float gain);
void PadChord(Stereo& out, size_t at, double seconds, const std::vector<int>& notes, float gain);
void PluckNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan);
void LeadNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan);
void BellNote(Stereo& out, size_t at, int midi, float gain, float pan);

// A ping-pong echo of a send bus (the wet signal only). `circular`: the
// buffer is a loop, so echoes of the end sound over the start.
Stereo PingPongEcho(const Stereo& send, double delaySeconds, float feedback, bool circular);

}  // namespace qb::content::sound
