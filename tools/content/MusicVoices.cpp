#include "tools/content/MusicVoices.h"

#include <algorithm>
#include <cmath>

#include "tools/content/MusicInstruments.h"

namespace qb::content::sound {

namespace {
// A short fade at the very end of every note so nothing is cut off mid-wave.
double tailFade(double t, double length, double fade) {
    return std::clamp((length - t) / fade, 0.0, 1.0);
}
}  // namespace

void KeysNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan) {
    const Adsr env{0.003, 0.9, 0.35, 0.25};
    const double hz = NoteHz(midi);
    const Pan p(pan);
    const double len = env.length(seconds);
    double pc = 0, pm = 0;
    RenderNote(out, at, len, [&](double t, float& l, float& r) {
        // Phase modulation by a partial an octave up, its index falling fast.
        const double index = 0.5 + 2.5 * std::exp(-t / 0.12);
        const double v = std::sin(2 * kPi * pc + index * std::sin(2 * kPi * pm));
        pc += hz / kRate;
        pm += 2.0 * hz / kRate;
        pc -= std::floor(pc);
        pm -= std::floor(pm);
        const float e = gain * env.at(t, seconds) * static_cast<float>(tailFade(t, len, 0.01) * v);
        l = e * p.l;
        r = e * p.r;
    });
}

void SubNote(Stereo& out, size_t at, double seconds, int midi, float gain) {
    Osc osc;
    const Adsr env{0.02, 0.3, 0.85, 0.15};
    const double hz = NoteHz(midi);
    RenderNote(out, at, env.length(seconds), [&](double t, float& l, float& r) {
        const float s = osc.sine(hz);
        const float v = gain * env.at(t, seconds) * (s + 0.15f * s * s * s);
        l = v;
        r = v;
    });
}

void SawLeadNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan) {
    constexpr int kVoices = 7;
    static const double detune[kVoices] = {-0.011, -0.007, -0.003, 0.0, 0.003, 0.007, 0.011};
    Osc saws[kVoices] = {Osc(0.0), Osc(0.13), Osc(0.29), Osc(0.41), Osc(0.57), Osc(0.71), Osc(0.89)};
    Svf fl, fr;
    const Adsr env{0.02, 0.3, 0.75, 0.18};
    const double hz = NoteHz(midi);
    const Pan p(pan);
    RenderNote(out, at, env.length(seconds), [&](double t, float& l, float& r) {
        float a = 0, b = 0;
        for (int k = 0; k < kVoices; ++k) {
            const float s = saws[k].saw(hz * (1.0 + detune[k]));
            (k % 2 == 0 ? a : b) += s;
        }
        const float e = gain * env.at(t, seconds) * 0.3f;
        l = e * p.l * fl.process(a + 0.5f * b, 2800.0f, 0.1f).low;
        r = e * p.r * fr.process(b + 0.5f * a, 2800.0f, 0.1f).low;
    });
}

void FluteNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan, Rng& rng) {
    Osc a, b;
    Svf breath;
    const Adsr env{0.08, 0.3, 0.8, 0.3};
    const double hz = NoteHz(midi);
    const Pan p(pan);
    RenderNote(out, at, env.length(seconds), [&](double t, float& l, float& r) {
        const double f = hz * (1.0 + 0.005 * std::sin(2 * kPi * 4.8 * t) * std::clamp(t / 0.4, 0.0, 1.0));
        const float noise = breath.process(rng.next(), static_cast<float>(hz * 2.0), 0.6f).band;
        const float v = gain * env.at(t, seconds) * (a.sine(f) + 0.12f * b.sine(2 * f) + 0.25f * noise);
        l = v * p.l;
        r = v * p.r;
    });
}

void Clap(Stereo& out, size_t at, float gain, Rng& rng) {
    Svf bp;
    const double len = 0.35;
    RenderNote(out, at, len, [&](double t, float& l, float& r) {
        // Three quick bursts, then the room.
        double env = std::exp(-t / 0.07);
        for (double burst : {0.0, 0.011, 0.022})
            if (t >= burst && t < burst + 0.01) env = std::max(env, std::exp(-(t - burst) / 0.004));
        const float n = bp.process(rng.next(), 1300.0f, 0.5f).band;
        const float v = gain * static_cast<float>(env * tailFade(t, len, 0.05)) * n * 1.8f;
        l = v;
        r = v * 0.9f;
    });
}

void Shaker(Stereo& out, size_t at, float gain, float pan, Rng& rng) {
    Svf hp;
    const double len = 0.09;
    const Pan p(pan);
    RenderNote(out, at, len, [&](double t, float& l, float& r) {
        const double env = std::min(1.0, t / 0.012) * std::exp(-t / 0.025) * tailFade(t, len, 0.02);
        const float v = gain * static_cast<float>(env) * hp.process(rng.next(), 6000.0f, 0.1f).high;
        l = v * p.l;
        r = v * p.r;
    });
}

}  // namespace qb::content::sound
