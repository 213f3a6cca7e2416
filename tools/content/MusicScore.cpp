// The first zone's piece and the win jingle. track01: a 32-bar A-minor arcade tune at 125 BPM
// (61.44 s) that loops without a seam: intro groove, main theme, a half-time
// bridge, then the theme again doubled. winlevel: a short C-major fanfare.
#include <filesystem>
#include <future>
#include <vector>

#include "tools/content/MusicInstruments.h"
#include "tools/content/MusicKit.h"
#include "tools/content/Sounds.h"

namespace qb::content::sound {

namespace {

struct Chord {
    int bass;              // bass root
    std::vector<int> pad;  // three close voices, led smoothly from chord to chord
};

const Chord kAm{45, {57, 60, 64}};
const Chord kF{41, {57, 60, 65}};
const Chord kC{36, {55, 60, 64}};
const Chord kG{43, {55, 59, 62}};
const Chord kDm{38, {57, 62, 65}};
const Chord kE{40, {56, 59, 64}};

// One chord per bar, 32 bars.
std::vector<Chord> progression() {
    const std::vector<Chord> verse = {kAm, kF, kC, kG, kAm, kF, kC, kG};
    const std::vector<Chord> bridge = {kDm, kAm, kF, kC, kDm, kAm, kF, kE};
    std::vector<Chord> bars;
    for (const auto* part : {&verse, &verse, &bridge, &verse})
        bars.insert(bars.end(), part->begin(), part->end());
    return bars;
}

struct Note {
    double step;    // 16ths from the start of the phrase
    double length;  // 16ths
    int midi;
};

// The main theme: eight bars over Am F C G twice.
const std::vector<Note> kTheme = {
    // Am
    {0, 2, 69},
    {2, 2, 72},
    {4, 4, 76},
    {8, 2, 74},
    {10, 2, 72},
    {12, 2, 71},
    {14, 2, 72},
    // F
    {16, 6, 72},
    {22, 2, 69},
    {24, 4, 69},
    {28, 4, 72},
    // C
    {32, 2, 76},
    {34, 2, 79},
    {36, 2, 76},
    {38, 2, 74},
    {40, 4, 72},
    {44, 4, 76},
    // G
    {48, 8, 74},
    {56, 4, 71},
    {60, 2, 67},
    {62, 2, 71},
    // Am
    {64, 2, 69},
    {66, 2, 72},
    {68, 4, 76},
    {72, 2, 74},
    {74, 2, 72},
    {76, 2, 71},
    {78, 2, 72},
    // F
    {80, 4, 72},
    {84, 4, 77},
    {88, 2, 76},
    {90, 2, 74},
    {92, 4, 72},
    // C
    {96, 2, 76},
    {98, 2, 79},
    {100, 4, 84},
    {104, 2, 83},
    {106, 2, 79},
    {108, 4, 76},
    // G
    {112, 4, 74},
    {116, 4, 71},
    {120, 2, 71},
    {122, 6, 74},
};

// The bridge: longer, singing notes over Dm Am F C, Dm Am F E.
const std::vector<Note> kBridge = {
    {0, 4, 77},   {4, 2, 76},   {6, 2, 74},   {8, 8, 69},                              // Dm
    {16, 4, 72},  {20, 4, 76},  {24, 8, 81},                                           // Am
    {32, 2, 81},  {34, 2, 79},  {36, 4, 77},  {40, 4, 72},  {44, 4, 77},               // F
    {48, 4, 76},  {52, 4, 79},  {56, 4, 76},  {60, 4, 72},                             // C
    {64, 2, 74},  {66, 2, 77},  {68, 4, 81},  {72, 2, 79},  {74, 2, 77}, {76, 4, 74},  // Dm
    {80, 4, 76},  {84, 4, 72},  {88, 4, 69},  {92, 4, 72},                             // Am
    {96, 4, 77},  {100, 4, 81}, {104, 4, 84}, {108, 4, 81},                            // F
    {112, 8, 83}, {120, 4, 80}, {124, 4, 76},                                          // E
};

void playPhrase(Stereo& out, Stereo& send, const Grid& g, double startStep, const std::vector<Note>& notes,
                int transpose, float gain, float pan, float sendGain) {
    for (const Note& n : notes) {
        const size_t at = g.at(startStep + n.step);
        const double len = g.seconds(n.length) * 0.92;
        LeadNote(out, at, len, n.midi + transpose, gain, pan);
        LeadNote(send, at, len, n.midi + transpose, gain * sendGain, pan);
    }
}

void drums(Stereo& out, const Grid& g, int bar, bool halfTime, bool fill, Rng& rng) {
    const double b = bar * 16.0;
    for (int s = 0; s < 16; s += 4) Kick(out, g.at(b + s), 0.7f);
    if (halfTime) {
        Snare(out, g.at(b + 8), 0.55f, rng);
        Kick(out, g.at(b + 10), 0.45f);
    } else {
        Snare(out, g.at(b + 4), 0.5f, rng);
        Snare(out, g.at(b + 12), 0.5f, rng);
    }
    for (int s = 2; s < 16; s += 4) HiHat(out, g.at(b + s), 0.28f, 0.035, 0.3f, rng);
    for (int s = 1; s < 16; s += 2) HiHat(out, g.at(b + s), 0.10f, 0.02, 0.3f, rng);
    if (bar % 2 == 1) HiHat(out, g.at(b + 14), 0.16f, 0.12, 0.3f, rng);
    if (fill) {
        for (int s = 12; s < 16; ++s)
            Snare(out, g.at(b + s), 0.22f + 0.08f * static_cast<float>(s - 12), rng);
    }
    if (bar % 8 == 0) Crash(out, g.at(b), 0.3f, rng);
}

void bassBar(Stereo& out, const Grid& g, int bar, const Chord& c) {
    static const int offsets[8] = {0, 0, 12, 0, 0, 12, 7, 12};
    for (int k = 0; k < 8; ++k) {
        const double len = g.seconds(k % 2 == 0 ? 1.6 : 1.2);
        BassNote(out, g.at(bar * 16.0 + 2 * k), len, c.bass + offsets[k], k % 2 == 0 ? 0.5f : 0.4f);
    }
}

void arpBar(Stereo& out, Stereo& send, const Grid& g, int bar, const Chord& c, float gain) {
    static const int order[16] = {0, 1, 2, 3, 2, 1, 0, 1, 2, 3, 2, 1, 0, 2, 3, 2};
    const int tones[4] = {c.pad[0] + 12, c.pad[1] + 12, c.pad[2] + 12, c.pad[0] + 24};
    for (int s = 0; s < 16; ++s) {
        const float accent = s % 4 == 0 ? 1.0f : 0.75f;
        const size_t at = g.at(bar * 16.0 + s);
        PluckNote(out, at, g.seconds(0.8), tones[order[s]], gain * accent, -0.35f);
        PluckNote(send, at, g.seconds(0.8), tones[order[s]], 0.6f * gain * accent, -0.35f);
    }
}

Stereo trackLoop() {
    const Grid g{125.0};
    const std::vector<Chord> bars = progression();
    const size_t loop = g.at(16.0 * static_cast<double>(bars.size()));
    Stereo out(loop + Samples(3.0));
    Stereo send(out.size());
    Rng drumNoise(0xD2D2u);
    for (int bar = 0; bar < static_cast<int>(bars.size()); ++bar) {
        const Chord& c = bars[static_cast<size_t>(bar)];
        const bool bridge = bar >= 16 && bar < 24;
        drums(out, g, bar, bridge, bar % 8 == 7, drumNoise);
        bassBar(out, g, bar, c);
        PadChord(out, g.at(bar * 16.0), g.seconds(15.5), c.pad, bridge ? 0.11f : 0.085f);
        // The arpeggio carries the intro and steps back when the theme sings.
        const float arp = bar < 8 ? 0.2f : (bridge ? 0.08f : 0.12f);
        arpBar(out, send, g, bar, c, arp);
    }
    playPhrase(out, send, g, 8 * 16, kTheme, 0, 0.3f, 0.1f, 0.5f);
    playPhrase(out, send, g, 16 * 16, kBridge, 0, 0.3f, 0.1f, 0.6f);
    playPhrase(out, send, g, 24 * 16, kTheme, 0, 0.28f, 0.15f, 0.5f);
    playPhrase(out, send, g, 24 * 16, kTheme, -12, 0.16f, -0.2f, 0.0f);

    FoldLoop(out, loop);
    FoldLoop(send, loop);
    out.mix(PingPongEcho(send, g.seconds(3), 0.38f, true), 0.6f);
    return out;
}

Stereo winJingle() {
    const Grid g{150.0};
    Stereo out(Samples(4.2));
    Stereo send(out.size());
    Rng noise(0x717u);
    // A quick climb with a snare roll under it.
    const int climb[4] = {67, 72, 76, 79};
    for (int s = 0; s < 4; ++s) {
        LeadNote(out, g.at(s), g.seconds(0.9), climb[s], 0.28f, 0.0f);
        Snare(out, g.at(s), 0.2f + 0.1f * static_cast<float>(s), noise);
    }
    // The landing, a turn through F and G, and home to C.
    struct Hit {
        double step, length;
        int lead, bass;
        std::vector<int> chord;
    };
    const Hit hits[] = {{4, 4, 84, 36, {60, 64, 67, 72}},
                        {8, 2, 81, 41, {60, 65, 69}},
                        {10, 2, 83, 43, {62, 67, 71}},
                        {12, 12, 84, 36, {60, 64, 67, 72}}};
    for (const Hit& h : hits) {
        const size_t at = g.at(h.step);
        LeadNote(out, at, g.seconds(h.length) * 0.95, h.lead, 0.3f, 0.0f);
        LeadNote(send, at, g.seconds(h.length) * 0.95, h.lead, 0.15f, 0.0f);
        LeadNote(out, at, g.seconds(h.length) * 0.95, h.lead - 12, 0.15f, 0.0f);
        BassNote(out, at, g.seconds(h.length) * 0.9, h.bass, 0.5f);
        PadChord(out, at, g.seconds(h.length), h.chord, 0.1f);
        Kick(out, at, 0.9f);
    }
    Crash(out, g.at(4), 0.3f, noise);
    Crash(out, g.at(12), 0.35f, noise);
    // Sparkles on the final chord.
    const int sparkle[4] = {84, 88, 91, 96};
    for (int k = 0; k < 4; ++k) {
        BellNote(out, g.at(12 + k), sparkle[k], 0.14f, k % 2 == 0 ? -0.5f : 0.5f);
        BellNote(send, g.at(12 + k), sparkle[k], 0.07f, 0.0f);
    }
    out.mix(PingPongEcho(send, g.seconds(3), 0.3f, false), 0.6f);
    FadeEdges(out.l, 0.002, 0.4);
    FadeEdges(out.r, 0.002, 0.4);
    return out;
}

// No DC filter here: a filter's start-up would put a seam into the loop, and
// every voice is already free of DC.
void master(Stereo& s, float peak) {
    const float p = Peak(s);
    if (p > 0) Scale(s, peak / p);
}

}  // namespace

void MakeMusic(const std::string& gameDir) {
    const std::string dir = gameDir + "music/";
    std::filesystem::create_directories(dir);
    Stereo track = trackLoop();
    master(track, 0.78f);
    // Every zone piece plays as loud as the first one.
    const float loudness = RmsOf(track);
    // The zone pieces are independent of each other: written side by side.
    std::vector<std::future<void>> pieces;
    for (const ZonePiece& piece : ZonePieces())
        pieces.push_back(std::async(std::launch::async, [piece, loudness, dir] {
            Stereo s = piece.score();
            MasterToRms(s, loudness);
            WriteOggVorbis(dir + piece.file, s, 0.4f, piece.serial);
        }));
    WriteOggVorbis(dir + "track01.ogg", track, 0.4f, 0x51B01);
    Stereo win = winJingle();
    master(win, 0.78f);
    WriteOggVorbis(dir + "winlevel.ogg", win, 0.4f, 0x51B07);
    for (auto& p : pieces) p.get();
}

}  // namespace qb::content::sound
