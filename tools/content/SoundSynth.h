// The small synthesiser the game's sounds are made with: band-limited
// oscillators, a state-variable filter, envelopes, a seeded noise source, and
// writers for 16-bit WAV and Ogg Vorbis. Everything is deterministic.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace qb::content::sound {

constexpr int kRate = 44100;
constexpr double kPi = 3.14159265358979323846;

// xorshift32 noise: the same seed gives the same sound on every machine.
class Rng {
public:
    explicit Rng(uint32_t seed) : s_(seed ? seed : 0x9E3779B9u) {}
    float next() {  // uniform in [-1, 1)
        s_ ^= s_ << 13;
        s_ ^= s_ >> 17;
        s_ ^= s_ << 5;
        return static_cast<float>(s_ >> 8) / 8388608.0f - 1.0f;
    }

private:
    uint32_t s_;
};

// Topology-preserving state-variable filter (stable under fast cutoff sweeps).
class Svf {
public:
    struct Out {
        float low, band, high;
    };
    Out process(float x, float cutoffHz, float resonance);  // resonance 0 (none) .. ~0.95
    void reset() { ic1_ = ic2_ = 0; }

private:
    float ic1_ = 0, ic2_ = 0;
    // Most filters hold one cutoff for a whole note: the tangent is the
    // costly part, so it is kept until the cutoff changes.
    float lastCutoff_ = -1, g_ = 0;
};

// Phase-accumulating oscillators with PolyBLEP edges, so bright waves do not alias.
class Osc {
public:
    explicit Osc(double phase = 0) : phase_(phase) {}
    float sine(double hz);
    float saw(double hz);
    float pulse(double hz, double width);  // width 0..1, 0.5 = square
    float triangle(double hz);

private:
    double advance(double hz);  // returns the phase before the step
    double phase_;
    float triState_ = 0;
};

// Attack, decay to a sustain level, release after `gateSeconds`; linear
// segments with an exponential-looking decay. The level is 0 at t = 0.
struct Adsr {
    double attack = 0.005, decay = 0.1, sustain = 0.7, release = 0.1;
    float at(double t, double gateSeconds) const;
    double length(double gateSeconds) const { return gateSeconds + release; }
};

double NoteHz(double midi);
size_t Samples(double seconds);

struct Stereo {
    std::vector<float> l, r;
    explicit Stereo(size_t n = 0) : l(n, 0.0f), r(n, 0.0f) {}
    size_t size() const { return l.size(); }
    void add(size_t i, float v, float pan) {  // pan -1 left .. +1 right, equal power
        if (i >= l.size()) return;
        const float a = static_cast<float>((pan + 1.0) * kPi / 4.0);
        l[i] += v * std::cos(a);
        r[i] += v * std::sin(a);
    }
    void mix(const Stereo& other, float gain);
};

// Folds everything past `loopLength` back onto the start, as if the piece had
// been playing round and round: tails of the last bars ring into the first.
void FoldLoop(Stereo& s, size_t loopLength);
void FoldLoop(std::vector<float>& s, size_t loopLength);

float Peak(const std::vector<float>& s);
float Peak(const Stereo& s);
void Scale(std::vector<float>& s, float gain);
void Scale(Stereo& s, float gain);
// Short ramps at both ends so a sound starts and stops without a click.
void FadeEdges(std::vector<float>& s, double inSeconds, double outSeconds);
// Removes a constant offset (a DC step at the start or end is a click too).
void RemoveDc(std::vector<float>& s);

void WriteWav16(const std::string& path, const std::vector<float>& mono);
// quality: the encoder's VBR quality, -0.1 .. 1.0. serial: the Ogg stream serial number.
void WriteOggVorbis(const std::string& path, const Stereo& s, float quality, int serial);

}  // namespace qb::content::sound
