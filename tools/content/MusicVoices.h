// More voices for the zone pieces: an electric piano, a sine sub bass, a
// detuned saw lead, a breathy flute, a clap and a shaker. Like the band in
// MusicInstruments.h, each call adds one note into a stereo buffer.
#pragma once

#include "tools/content/SoundSynth.h"

namespace qb::content::sound {

// Two-operator FM: a bright attack that mellows, like a tine piano.
void KeysNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan);
// A pure low sine with a touch of warmth; felt more than heard.
void SubNote(Stereo& out, size_t at, double seconds, int midi, float gain);
// Seven detuned saws through a low-pass: the wide lead of synth pop.
void SawLeadNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan);
// A sine with a little breath noise and a slow vibrato.
void FluteNote(Stereo& out, size_t at, double seconds, int midi, float gain, float pan, Rng& rng);
void Clap(Stereo& out, size_t at, float gain, Rng& rng);
void Shaker(Stereo& out, size_t at, float gain, float pan, Rng& rng);

}  // namespace qb::content::sound
