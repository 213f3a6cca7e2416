// What the zone pieces are written with: keys and chords by scale degree,
// tunes that follow the chords, a cache that renders each distinct note once
// (a loop repeats the same drum hit hundreds of times) and the mastering
// that gives every piece the same loudness.
#pragma once

#include <array>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "tools/content/MusicInstruments.h"

namespace qb::content::sound {

struct Key {
    int tonic;                 // MIDI note of degree 0
    std::array<int, 7> steps;  // semitones of the seven degrees above the tonic
    // Any degree, negative or past the octave: 7 is the tonic an octave up.
    int note(int degree) const;
};

// The chord on `degree` (root, third, fifth and, with `seventh`, the
// seventh), each voice moved by octaves to lie closest to `around`.
std::vector<int> Chord(const Key& key, int degree, int around, bool seventh = false);

struct TuneNote {
    double step;    // 16ths from the start of the tune
    double length;  // 16ths
    int midi;
};

// A tune over one chord a bar (`chords`: scale degrees). `rhythm` holds note
// lengths in 16ths (negative: a rest) and repeats to fill the bars. Notes on
// the beat land on chord tones, the others walk by step; the tune stays
// between degrees `low` and `high` and ends on the last chord's root.
std::vector<TuneNote> Tune(const Key& key, const std::vector<int>& chords, const std::vector<double>& rhythm,
                           int low, int high, Rng& rng);

// Renders each distinct note once (at full gain, centred where the voice
// pans itself) and mixes copies of it.
class NoteCache {
public:
    using Render = std::function<void(Stereo&)>;
    // `id` names the sound completely (voice, pitch, length, pan).
    void add(Stereo& out, size_t at, float gain, const std::string& id, double seconds, const Render& render);

private:
    std::map<std::string, Stereo> notes_;
};

// Folds the tail onto the start (the piece is a loop) and adds the echo of
// `send` the way track01 does.
Stereo FinishLoop(Stereo out, Stereo send, size_t loop, double echoSeconds, float feedback, float echoGain);

// Scales to the given RMS (both channels together); peaks above 0.8 are
// rounded off smoothly so they stay under full scale.
void MasterToRms(Stereo& s, float rms);
float RmsOf(const Stereo& s);

}  // namespace qb::content::sound
