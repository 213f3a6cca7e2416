// The band that plays the game's music: a drum kit, a synth bass, a pad, a
// plucked arpeggio voice, a lead and a bell. Each call adds one note or hit
// into a stereo buffer at a sample position; notes past the end are cut.
#pragma once

#include <cmath>
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

// Equal-power gains for a pan position, -1 left .. +1 right.
struct Pan {
    float l, r;
    explicit Pan(float pan)
        : l(static_cast<float>(std::cos((pan + 1.0) * kPi / 4.0))),
          r(static_cast<float>(std::sin((pan + 1.0) * kPi / 4.0))) {}
};

// Adds a note `seconds` long at `at`: `voice(t, l, r)` gives each sample.
template <typename Voice>
void RenderNote(Stereo& out, size_t at, double seconds, Voice voice) {
    const size_t n = Samples(seconds);
    for (size_t i = 0; i < n && at + i < out.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        float l = 0, r = 0;
        voice(t, l, r);
        out.l[at + i] += l;
        out.r[at + i] += r;
    }
}

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
