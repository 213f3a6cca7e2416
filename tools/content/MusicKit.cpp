#include "tools/content/MusicKit.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace qb::content::sound {

int Key::note(int degree) const {
    const int octave = degree >= 0 ? degree / 7 : -((6 - degree) / 7);
    return tonic + 12 * octave + steps[static_cast<size_t>(degree - 7 * octave)];
}

std::vector<int> Chord(const Key& key, int degree, int around, bool seventh) {
    std::vector<int> notes;
    for (int k = 0; k < (seventh ? 4 : 3); ++k) {
        int n = key.note(degree + 2 * k);
        while (n - around > 6) n -= 12;
        while (around - n > 6) n += 12;
        notes.push_back(n);
    }
    std::sort(notes.begin(), notes.end());
    return notes;
}

namespace {
bool isChordTone(int degree, int chordRoot) {
    const int d = ((degree - chordRoot) % 7 + 7) % 7;
    return d == 0 || d == 2 || d == 4;
}
}  // namespace

std::vector<TuneNote> Tune(const Key& key, const std::vector<int>& chords, const std::vector<double>& rhythm,
                           int low, int high, Rng& rng) {
    std::vector<TuneNote> tune;
    const double end = 16.0 * static_cast<double>(chords.size());
    int degree = (low + high) / 2;
    double step = 0;
    for (size_t k = 0; step < end; ++k) {
        const double len = std::min(std::fabs(rhythm[k % rhythm.size()]), end - step);
        const bool rest = rhythm[k % rhythm.size()] < 0;
        const int chord = chords[static_cast<size_t>(step / 16.0)];
        const bool last = step + len >= end;
        if (!rest) {
            if (last) {
                // Home: the root of the last chord nearest to where the tune is.
                int best = chord;
                for (int d = low; d <= high; ++d)
                    if (((d - chord) % 7 + 7) % 7 == 0 && std::abs(d - degree) < std::abs(best - degree))
                        best = d;
                degree = best;
            } else if (std::fmod(step, 4.0) == 0.0) {
                // On the beat: the nearest chord tone, up or down at random.
                const int dir = rng.next() < 0 ? -1 : 1;
                int d = degree;
                for (int n = 0; n < 7 && !isChordTone(d, chord); ++n) d += dir;
                degree = d;
            } else {
                const float r = rng.next();
                degree += r < -0.5f ? -2 : (r < 0 ? -1 : (r < 0.6f ? 1 : 2));
            }
            if (degree > high) degree -= 2 * (degree - high);
            if (degree < low) degree += 2 * (low - degree);
            tune.push_back({step, len, key.note(degree)});
        }
        step += len;
    }
    return tune;
}

void NoteCache::add(Stereo& out, size_t at, float gain, const std::string& id, double seconds,
                    const Render& render) {
    auto it = notes_.find(id);
    if (it == notes_.end()) {
        Stereo note(Samples(seconds));
        render(note);
        it = notes_.emplace(id, std::move(note)).first;
    }
    const Stereo& n = it->second;
    const size_t count = std::min(n.size(), out.size() > at ? out.size() - at : 0);
    for (size_t i = 0; i < count; ++i) {
        out.l[at + i] += gain * n.l[i];
        out.r[at + i] += gain * n.r[i];
    }
}

Stereo FinishLoop(Stereo out, Stereo send, size_t loop, double echoSeconds, float feedback, float echoGain) {
    FoldLoop(out, loop);
    FoldLoop(send, loop);
    out.mix(PingPongEcho(send, echoSeconds, feedback, true), echoGain);
    return out;
}

float RmsOf(const Stereo& s) {
    double sum = 0;
    for (size_t i = 0; i < s.size(); ++i) sum += s.l[i] * s.l[i] + s.r[i] * s.r[i];
    return s.size() ? static_cast<float>(std::sqrt(sum / (2.0 * static_cast<double>(s.size())))) : 0.0f;
}

void MasterToRms(Stereo& s, float rms) {
    constexpr float knee = 0.8f;
    auto limit = [](float v) {
        const float a = std::fabs(v);
        if (a <= knee) return v;
        const float over = knee + (1.0f - knee) * std::tanh((a - knee) / (1.0f - knee)) * 0.95f;
        return v < 0 ? -over : over;
    };
    // Twice: the rounding takes a little off the loudest pieces.
    for (int pass = 0; pass < 2; ++pass) {
        const float now = RmsOf(s);
        if (now <= 0) return;
        Scale(s, rms / now);
        for (size_t i = 0; i < s.size(); ++i) {
            s.l[i] = limit(s.l[i]);
            s.r[i] = limit(s.r[i]);
        }
    }
}

}  // namespace qb::content::sound
