#include "tools/content/ZoneBand.h"

#include <cmath>

#include "tools/content/MusicVoices.h"

namespace qb::content::sound {

ZoneBand::ZoneBand(double bpm, int bars)
    : grid{bpm}, bars(bars), loop(grid.at(16.0 * bars)), out(loop + Samples(3.0)), send(out.size()) {}

std::string ZoneBand::id(const char* voice, int midi, double seconds, float pan) {
    return std::string(voice) + "/" + std::to_string(midi) + "/" +
           std::to_string(std::lround(seconds * 1000)) + "/" + std::to_string(std::lround(pan * 100));
}

// Drum hits are rendered once each (with their own fixed noise), so a hit
// sounds the same every time, as a sampled kit would.
void ZoneBand::kick(double step, float gain) {
    cache_.add(out, at(step), gain, "kick", 0.45, [](Stereo& b) { Kick(b, 0, 1.0f); });
}

void ZoneBand::snare(double step, float gain) {
    cache_.add(out, at(step), gain, "snare", 0.32, [](Stereo& b) {
        Rng rng(0x5A5Au);
        Snare(b, 0, 1.0f, rng);
    });
}

void ZoneBand::clap(double step, float gain) {
    cache_.add(out, at(step), gain, "clap", 0.35, [](Stereo& b) {
        Rng rng(0xC1A9u);
        Clap(b, 0, 1.0f, rng);
    });
    cache_.add(send, at(step), gain * 0.3f, "clap", 0.35, [](Stereo&) {});
}

void ZoneBand::hat(double step, float gain, bool open, int variant) {
    const double decay = open ? 0.12 : 0.03;
    cache_.add(out, at(step), gain, id(open ? "ohat" : "hat", variant, decay, 0.3f), decay * 6.0,
               [decay, variant](Stereo& b) {
                   Rng rng(0x4A7u + static_cast<uint32_t>(variant));
                   HiHat(b, 0, 1.0f, decay, 0.3f, rng);
               });
}

void ZoneBand::shaker(double step, float gain, float pan, int variant) {
    cache_.add(out, at(step), gain, id("shaker", variant, 0.09, pan), 0.09, [pan, variant](Stereo& b) {
        Rng rng(0x5AE + static_cast<uint32_t>(variant));
        Shaker(b, 0, 1.0f, pan, rng);
    });
}

void ZoneBand::crash(double step, float gain) {
    cache_.add(out, at(step), gain, "crash", 2.6, [](Stereo& b) {
        Rng rng(0xC4A5u);
        Crash(b, 0, 1.0f, rng);
    });
}

void ZoneBand::bass(double step, double length, int midi, float gain) {
    const double s = grid.seconds(length);
    cache_.add(out, at(step), gain, id("bass", midi, s, 0), s + 0.05,
               [s, midi](Stereo& b) { BassNote(b, 0, s, midi, 1.0f); });
}

void ZoneBand::sub(double step, double length, int midi, float gain) {
    const double s = grid.seconds(length);
    cache_.add(out, at(step), gain, id("sub", midi, s, 0), s + 0.15,
               [s, midi](Stereo& b) { SubNote(b, 0, s, midi, 1.0f); });
}

void ZoneBand::pad(double step, double length, const std::vector<int>& notes, float gain) {
    const double s = grid.seconds(length);
    for (int n : notes)
        cache_.add(out, at(step), gain, id("pad", n, s, 0), s + 0.6,
                   [s, n](Stereo& b) { PadChord(b, 0, s, {n}, 1.0f); });
}

void ZoneBand::place(double step, float gain, float sendGain, const std::string& key, double seconds,
                     const NoteCache::Render& render) {
    cache_.add(out, at(step), gain, key, seconds, render);
    if (sendGain > 0) cache_.add(send, at(step), gain * sendGain, key, seconds, render);
}

void ZoneBand::keys(double step, double length, int midi, float gain, float pan, float sendGain) {
    const double s = grid.seconds(length);
    place(step, gain, sendGain, id("keys", midi, s, pan), s + 0.25,
          [s, midi, pan](Stereo& b) { KeysNote(b, 0, s, midi, 1.0f, pan); });
}

void ZoneBand::pluck(double step, double length, int midi, float gain, float pan, float sendGain) {
    const double s = grid.seconds(length);
    place(step, gain, sendGain, id("pluck", midi, s, pan), s + 0.25,
          [s, midi, pan](Stereo& b) { PluckNote(b, 0, s, midi, 1.0f, pan); });
}

void ZoneBand::bell(double step, int midi, float gain, float pan, float sendGain) {
    place(step, gain, sendGain, id("bell", midi, 1.6, pan), 1.6,
          [midi, pan](Stereo& b) { BellNote(b, 0, midi, 1.0f, pan); });
}

void ZoneBand::lead(double step, double length, int midi, float gain, float pan, float sendGain) {
    const double s = grid.seconds(length) * 0.92;
    place(step, gain, sendGain, id("lead", midi, s, pan), s + 0.12,
          [s, midi, pan](Stereo& b) { LeadNote(b, 0, s, midi, 1.0f, pan); });
}

void ZoneBand::sawLead(double step, double length, int midi, float gain, float pan, float sendGain) {
    const double s = grid.seconds(length) * 0.92;
    place(step, gain, sendGain, id("saw", midi, s, pan), s + 0.18,
          [s, midi, pan](Stereo& b) { SawLeadNote(b, 0, s, midi, 1.0f, pan); });
}

void ZoneBand::flute(double step, double length, int midi, float gain, float pan, float sendGain) {
    const double s = grid.seconds(length) * 0.95;
    place(step, gain, sendGain, id("flute", midi, s, pan), s + 0.3, [s, midi, pan](Stereo& b) {
        Rng rng(0xF1u + static_cast<uint32_t>(midi));
        FluteNote(b, 0, s, midi, 1.0f, pan, rng);
    });
}

void ZoneBand::tune(int bar, const std::vector<TuneNote>& notes, Voice voice, int transpose, float gain,
                    float pan, float sendGain) {
    for (const TuneNote& n : notes) {
        const double step = 16.0 * bar + n.step;
        const int midi = n.midi + transpose;
        switch (voice) {
            case Voice::Keys:
                keys(step, n.length, midi, gain, pan, sendGain);
                break;
            case Voice::Bell:
                bell(step, midi, gain, pan, sendGain);
                break;
            case Voice::Lead:
                lead(step, n.length, midi, gain, pan, sendGain);
                break;
            case Voice::SawLead:
                sawLead(step, n.length, midi, gain, pan, sendGain);
                break;
            case Voice::Flute:
                flute(step, n.length, midi, gain, pan, sendGain);
                break;
        }
    }
}

Stereo ZoneBand::finish(double echoSteps, float feedback, float echoGain) {
    return FinishLoop(std::move(out), std::move(send), loop, grid.seconds(echoSteps), feedback, echoGain);
}

}  // namespace qb::content::sound
