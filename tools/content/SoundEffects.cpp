// The eight sound effects, each a short mono 16-bit WAV at 44.1 kHz. Every
// one starts and ends on silence and peaks well below full scale; the menu
// sounds are quieter than the driving ones because they repeat so often.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <vector>

#include "tools/content/SoundSynth.h"
#include "tools/content/Sounds.h"

namespace qb::content::sound {

namespace {
using Mono = std::vector<float>;

double expSweep(double from, double to, double t, double seconds) {
    const double u = std::clamp(t / seconds, 0.0, 1.0);
    return from * std::pow(to / from, u);
}

// Normalise, clean the ends and bring to the level the effect plays at.
Mono finish(Mono s, float peak, double fadeIn = 0.003, double fadeOut = 0.02) {
    RemoveDc(s);
    FadeEdges(s, fadeIn, fadeOut);
    const float p = Peak(s);
    if (p > 0) Scale(s, peak / p);
    return s;
}

// A springy rising blip: the vehicle leaving the ground.
Mono jump() {
    Mono s(Samples(0.24));
    Osc a, b;
    Svf lp;
    for (size_t i = 0; i < s.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const double hz = expSweep(220.0, 720.0, t, 0.17);
        const float env = static_cast<float>(std::min(1.0, t / 0.004) * std::exp(-t / 0.09));
        const float v = 0.6f * a.pulse(hz, 0.3) + 0.5f * b.sine(hz * 0.5);
        s[i] = env * lp.process(v, 3200.0f, 0.2f).low;
    }
    return finish(s, 0.60f);
}

// A long falling whistle with a wobble: the vehicle dropping out of sight.
Mono fall() {
    const double len = 1.2;
    Mono s(Samples(len));
    Osc a, b;
    for (size_t i = 0; i < s.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const double hz = expSweep(1400.0, 150.0, t, len) * (1.0 + 0.015 * std::sin(2 * kPi * 7.0 * t));
        const double fadeOut = std::clamp((len - t) / 0.45, 0.0, 1.0);
        const float env = static_cast<float>(std::min(1.0, t / 0.01) * fadeOut * fadeOut);
        s[i] = env * (0.8f * a.sine(hz) + 0.25f * b.triangle(hz));
    }
    return finish(s, 0.55f);
}

// A bell partial set: fundamental, the inharmonic 2.76 of a struck bar, octave.
void bell(Mono& s, double start, double hz, float gain, double decay) {
    Osc f, p, o;
    for (size_t i = Samples(start); i < s.size(); ++i) {
        const double t = static_cast<double>(i) / kRate - start;
        const float env = static_cast<float>(std::min(1.0, t / 0.002) * std::exp(-t / decay));
        const float v = f.sine(hz) + 0.25f * p.sine(hz * 2.76) * static_cast<float>(std::exp(-t / 0.05)) +
                        0.3f * o.sine(hz * 2.0);
        s[i] += gain * env * v;
    }
}

// Two quick rising chimes and a sparkle on top: a star collected.
Mono getStar() {
    Mono s(Samples(0.6));
    bell(s, 0.000, NoteHz(83), 0.8f, 0.12);   // B5
    bell(s, 0.065, NoteHz(88), 1.0f, 0.20);   // E6
    bell(s, 0.130, NoteHz(95), 0.35f, 0.15);  // B6
    return finish(s, 0.60f, 0.002, 0.05);
}

// Filtered noise closing down to a rumble, a low boom and some crackle.
Mono blowUp() {
    const double len = 1.5;
    Mono s(Samples(len));
    Rng noise(0x5EED0005u);
    Rng crackle(0x0C4AC41Eu);
    Svf lp, lp2;
    Osc boom;
    float crack = 0;
    for (size_t i = 0; i < s.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const float cutoff = static_cast<float>(expSweep(7000.0, 180.0, t, 1.2));
        const float n = lp2.process(lp.process(noise.next(), cutoff, 0.1f).low, cutoff, 0.0f).low;
        const float env = static_cast<float>(std::min(1.0, t / 0.002) * std::exp(-t / 0.38));
        const float b = boom.sine(expSweep(75.0, 32.0, t, 0.6)) * static_cast<float>(std::exp(-t / 0.35));
        if (t < 0.7 && crackle.next() > 0.9985f) crack = crackle.next();
        crack *= 0.985f;
        const float crackFade = t < 0.7 ? static_cast<float>(1.0 - t / 0.7) : 0.0f;
        const float v = 1.4f * env * n + 0.9f * b + 0.5f * crack * crackFade;
        s[i] = std::tanh(1.5f * v);
    }
    return finish(s, 0.75f, 0.002, 0.3);
}

// A boing: a thump, then a wobbling tone that springs upwards and dies away.
Mono bouncePad() {
    const double len = 0.6;
    Mono s(Samples(len));
    Osc tone, thump;
    Svf lp;
    for (size_t i = 0; i < s.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const double wobble = 1.0 + 0.35 * std::sin(2 * kPi * 14.0 * t) * std::exp(-t / 0.25);
        const double hz = expSweep(140.0, 420.0, t, 0.35) * wobble;
        const float env = static_cast<float>(std::min(1.0, t / 0.004) * std::exp(-t / 0.17));
        const float v = tone.triangle(hz) * 1.6f + 0.4f * tone.sine(hz * 2.0);
        const float k = thump.sine(expSweep(160.0, 60.0, t, 0.08)) * static_cast<float>(std::exp(-t / 0.04));
        s[i] = env * lp.process(v, 2500.0f, 0.3f).low + 0.7f * k;
    }
    return finish(s, 0.65f, 0.002, 0.05);
}

// A rising resonant saw over a swelling whoosh: the boost kicking in.
Mono turboPlatform() {
    const double len = 0.65;
    Mono s(Samples(len));
    Osc saw, sub;
    Svf lp, bp;
    Rng noise(0x70B0u);
    for (size_t i = 0; i < s.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const double hz = expSweep(110.0, 880.0, t, 0.45);
        const float tone =
            lp.process(saw.saw(hz) + 0.5f * sub.pulse(hz * 0.5, 0.5), static_cast<float>(hz * 4.0), 0.6f).low;
        const float air =
            bp.process(noise.next(), static_cast<float>(expSweep(500.0, 5000.0, t, len)), 0.5f).band;
        const double fadeOut = std::clamp((len - t) / 0.2, 0.0, 1.0);
        const float env = static_cast<float>(std::min(1.0, t / 0.01) * fadeOut);
        s[i] = env * (0.7f * tone + 0.6f * air * static_cast<float>(t / len));
    }
    return finish(s, 0.60f);
}

// A short soft blip, barely there: a button lighting up under the pointer.
Mono rollover() {
    Mono s(Samples(0.07));
    Osc a, b;
    for (size_t i = 0; i < s.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const float env = static_cast<float>(std::min(1.0, t / 0.002) * std::exp(-t / 0.015));
        s[i] = env * (a.sine(1320.0) + 0.2f * b.sine(2640.0));
    }
    return finish(s, 0.35f, 0.002, 0.01);
}

// A quick airy swish with a small chirp: moving from one screen to the next.
Mono transit() {
    const double len = 0.34;
    Mono s(Samples(len));
    Rng noise(0x7A2517u);
    Svf bp;
    Osc chirp;
    for (size_t i = 0; i < s.size(); ++i) {
        const double t = static_cast<double>(i) / kRate;
        const double u = t / len;
        const float swell = static_cast<float>(std::sin(kPi * u));
        const float cutoff = static_cast<float>(u < 0.5 ? expSweep(400.0, 3500.0, t, len * 0.5)
                                                        : expSweep(3500.0, 1200.0, t - len * 0.5, len * 0.5));
        const float air = bp.process(noise.next(), cutoff, 0.6f).band;
        const float tone =
            chirp.sine(expSweep(600.0, 1200.0, t, len)) * static_cast<float>(std::exp(-t / 0.08));
        s[i] = swell * swell * 1.2f * air + 0.35f * tone * static_cast<float>(std::min(1.0, t / 0.004));
    }
    return finish(s, 0.45f, 0.003, 0.04);
}
}  // namespace

void MakeSoundEffects(const std::string& gameDir) {
    const std::string dir = gameDir + "sfx/";
    std::filesystem::create_directories(dir);
    WriteWav16(dir + "Jump.wav", jump());
    WriteWav16(dir + "fall.wav", fall());
    WriteWav16(dir + "getstar.wav", getStar());
    WriteWav16(dir + "blowup.wav", blowUp());
    WriteWav16(dir + "bouncepad.wav", bouncePad());
    WriteWav16(dir + "turboplatform.wav", turboPlatform());
    WriteWav16(dir + "rollover.wav", rollover());
    WriteWav16(dir + "transit.wav", transit());
}

}  // namespace qb::content::sound
