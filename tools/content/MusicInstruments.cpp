#include "tools/content/MusicInstruments.h"

#include <algorithm>
#include <cmath>

namespace qb::content::sound {

namespace {
double cents(double c) {
    return std::pow(2.0, c / 1200.0);
}
}  // namespace

void Kick(Stereo& out, size_t at, float gain) {
    Osc osc;
    RenderNote(out, at, 0.45, [&](double t, float& l, float& r) {
        const double hz = 48.0 + 120.0 * std::exp(-t / 0.028);
        const double env =
            std::min(1.0, t / 0.001) * std::exp(-t / 0.22) * std::clamp((0.45 - t) / 0.05, 0.0, 1.0);
        const float v = gain * static_cast<float>(env) * osc.sine(hz);
        l = v;
        r = v;
    });
}

void Snare(Stereo& out, size_t at, float gain, Rng& rng) {
    Osc body;
    Svf hp;
    RenderNote(out, at, 0.32, [&](double t, float& l, float& r) {
        const double attack = std::min(1.0, t / 0.001);
        const float tone =
            body.sine(185.0 + 40.0 * std::exp(-t / 0.01)) * static_cast<float>(std::exp(-t / 0.05));
        const float noise =
            hp.process(rng.next(), 1800.0f, 0.1f).high * static_cast<float>(std::exp(-t / 0.09));
        const float tail = static_cast<float>(std::clamp((0.32 - t) / 0.04, 0.0, 1.0) * attack);
        const float v = gain * tail * (0.55f * tone + 0.8f * noise);
        l = v * 0.95f;
        r = v;
    });
}

void HiHat(Stereo& out, size_t at, float gain, double decaySeconds, float pan, Rng& rng) {
    Svf hp, lp;
    const double len = decaySeconds * 6.0;
    const Pan side(pan);
    RenderNote(out, at, len, [&](double t, float& l, float& r) {
        const float n = lp.process(hp.process(rng.next(), 7000.0f, 0.2f).high, 12000.0f, 0.0f).low;
        const double env = std::min(1.0, t / 0.0008) * std::exp(-t / decaySeconds) *
                           std::clamp((len - t) / (len * 0.2), 0.0, 1.0);
        const float v = gain * static_cast<float>(env) * n;
        l = v * side.l;
        r = v * side.r;
    });
}

void Crash(Stereo& out, size_t at, float gain, Rng& rng) {
    Svf hl, hr;
    const double len = 2.6;
    RenderNote(out, at, len, [&](double t, float& l, float& r) {
        const double env = std::min(1.0, t / 0.002) * (0.3 * std::exp(-t / 0.08) + 0.7 * std::exp(-t / 0.7)) *
                           std::clamp((len - t) / 0.5, 0.0, 1.0);
        const float g = gain * static_cast<float>(env);
        l = g * hl.process(rng.next(), 4500.0f, 0.3f).high;
        r = g * hr.process(rng.next(), 4200.0f, 0.3f).high;
    });
}

void BassNote(Stereo& out, size_t at, double seconds, int midi, float gain) {
    Osc saw, sub;
    Svf lp;
    const Adsr env{0.003, 0.15, 0.6, 0.05};
    const double hz = NoteHz(midi);
    RenderNote(out, at, env.length(seconds), [&](double t, float& l, float& r) {
        const float cutoff = static_cast<float>(220.0 + 1500.0 * std::exp(-t / 0.07));
        const float raw = 0.6f * saw.saw(hz) + 0.6f * sub.pulse(hz * 0.5, 0.5);
        const float v = gain * env.at(t, seconds) * lp.process(raw, cutoff, 0.35f).low;
        l = v;
        r = v;
    });
}

void PadChord(Stereo& out, size_t at, double seconds, const std::vector<int>& notes, float gain) {
    const Adsr env{0.25, 0.6, 0.8, 0.6};
    const double detune[2][2] = {{-9.0, 3.0}, {-3.0, 9.0}};
    for (size_t k = 0; k < notes.size(); ++k) {
        const double hz = NoteHz(notes[k]);
        Osc ol[2] = {Osc(0.1 * static_cast<double>(k)), Osc(0.37)};
        Osc orr[2] = {Osc(0.71), Osc(0.23 * static_cast<double>(k))};
        Svf fl, fr;
        const double hl0 = hz * cents(detune[0][0]), hl1 = hz * cents(detune[0][1]);
        const double hr0 = hz * cents(detune[1][0]), hr1 = hz * cents(detune[1][1]);
        RenderNote(out, at, env.length(seconds), [&](double t, float& l, float& r) {
            const float cutoff = static_cast<float>(900.0 + 300.0 * std::sin(2 * kPi * 0.25 * t));
            const float e = gain * env.at(t, seconds);
            const float sl = ol[0].saw(hl0) + ol[1].saw(hl1);
            const float sr = orr[0].saw(hr0) + orr[1].saw(hr1);
            l = e * fl.process(sl, cutoff, 0.1f).low;
            r = e * fr.process(sr, cutoff, 0.1f).low;
        });
    }
}

void PluckNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan) {
    Osc osc;
    Svf lp;
    const double hz = NoteHz(midi);
    const double len = seconds + 0.25;
    const Pan side(pan);
    RenderNote(out, at, len, [&](double t, float& l, float& r) {
        const float cutoff = static_cast<float>(400.0 + 3500.0 * std::exp(-t / 0.05));
        const double env =
            std::min(1.0, t / 0.002) * std::exp(-t / 0.14) * std::clamp((len - t) / 0.05, 0.0, 1.0);
        const float v = gain * static_cast<float>(env) * lp.process(osc.pulse(hz, 0.25), cutoff, 0.3f).low;
        l = v * side.l;
        r = v * side.r;
    });
}

void LeadNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan) {
    Osc a, b, c;
    Svf lp;
    const Adsr env{0.012, 0.25, 0.7, 0.12};
    const double hz = NoteHz(midi);
    const double flat = cents(-6), sharp = cents(6);
    const Pan side(pan);
    RenderNote(out, at, env.length(seconds), [&](double t, float& l, float& r) {
        // Vibrato creeps in on held notes only.
        const double depth = 0.004 * std::clamp((t - 0.18) / 0.2, 0.0, 1.0);
        const double f = hz * (1.0 + depth * std::sin(2 * kPi * 5.5 * t));
        const float raw =
            0.5f * a.pulse(f * flat, 0.3) + 0.5f * b.pulse(f * sharp, 0.5) + 0.3f * c.triangle(f);
        const float v = gain * env.at(t, seconds) * lp.process(raw, 3600.0f, 0.15f).low;
        l = v * side.l;
        r = v * side.r;
    });
}

void BellNote(Stereo& out, size_t at, int midi, float gain, float pan) {
    Osc f, p, o;
    const double hz = NoteHz(midi);
    const double len = 1.6;
    const Pan side(pan);
    RenderNote(out, at, len, [&](double t, float& l, float& r) {
        const double env =
            std::min(1.0, t / 0.002) * std::exp(-t / 0.45) * std::clamp((len - t) / 0.2, 0.0, 1.0);
        const float v = f.sine(hz) + 0.2f * p.sine(hz * 2.76) * static_cast<float>(std::exp(-t / 0.08)) +
                        0.25f * o.sine(hz * 2.0);
        l = gain * static_cast<float>(env) * v * side.l;
        r = gain * static_cast<float>(env) * v * side.r;
    });
}

Stereo PingPongEcho(const Stereo& send, double delaySeconds, float feedback, bool circular) {
    const size_t n = send.size();
    const size_t d = Samples(delaySeconds);
    Stereo y(n);
    if (d == 0 || d >= n) return y;
    Svf toneL, toneR;  // each repeat a little darker, like tape
    const int passes = circular ? 3 : 1;
    for (int pass = 0; pass < passes; ++pass) {
        for (size_t i = 0; i < n; ++i) {
            if (!circular && i < d) continue;
            const size_t j = (i + n - d) % n;
            const float in = 0.5f * (send.l[j] + send.r[j]);
            y.l[i] = toneL.process(in + feedback * y.r[j], 5000.0f, 0.0f).low;
            y.r[i] = toneR.process(feedback * y.l[j], 5000.0f, 0.0f).low;
        }
    }
    return y;
}

}  // namespace qb::content::sound
