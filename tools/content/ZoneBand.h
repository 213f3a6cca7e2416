// One recording session of a zone piece: the loop buffer, the echo send,
// the tempo grid and a note cache, with one call per instrument that places
// a note on the grid (positions and lengths in 16ths).
#pragma once

#include <string>
#include <vector>

#include "tools/content/MusicKit.h"

namespace qb::content::sound {

class ZoneBand {
public:
    ZoneBand(double bpm, int bars);

    const Grid grid;
    const int bars;
    const size_t loop;  // samples of one pass
    Stereo out, send;

    void kick(double step, float gain);
    void snare(double step, float gain);
    void clap(double step, float gain);
    void hat(double step, float gain, bool open, int variant);
    void shaker(double step, float gain, float pan, int variant);
    void crash(double step, float gain);

    void bass(double step, double length, int midi, float gain);
    void sub(double step, double length, int midi, float gain);
    void pad(double step, double length, const std::vector<int>& notes, float gain);
    void keys(double step, double length, int midi, float gain, float pan, float sendGain);
    void pluck(double step, double length, int midi, float gain, float pan, float sendGain);
    void bell(double step, int midi, float gain, float pan, float sendGain);
    void lead(double step, double length, int midi, float gain, float pan, float sendGain);
    void sawLead(double step, double length, int midi, float gain, float pan, float sendGain);
    void flute(double step, double length, int midi, float gain, float pan, float sendGain);

    // A tune from Tune() starting at bar `bar`, on one of the melodic voices.
    enum class Voice { Keys, Bell, Lead, SawLead, Flute };
    void tune(int bar, const std::vector<TuneNote>& notes, Voice voice, int transpose, float gain, float pan,
              float sendGain);

    // Folds, adds the echo and returns the finished loop.
    Stereo finish(double echoSteps, float feedback, float echoGain);

private:
    size_t at(double step) const { return grid.at(step); }
    static std::string id(const char* voice, int midi, double seconds, float pan);
    // A melodic note on the loop and, with a `sendGain`, a copy on the echo send.
    void place(double step, float gain, float sendGain, const std::string& key, double seconds,
               const NoteCache::Render& render);
    NoteCache cache_;
};

}  // namespace qb::content::sound
