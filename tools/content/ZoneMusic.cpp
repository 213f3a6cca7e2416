// The pieces of zones 2 to 6, each in its own key, tempo and band, after the
// zone's sky: a warm synth-pop sunset, a floating aurora, a bright dawn above
// the clouds, the slow dark of deep space and a storm at full tilt. Each is
// a loop of whole bars: an intro, a theme, a second theme, the theme again.
#include <algorithm>
#include <string>
#include <vector>

#include "tools/content/Sounds.h"
#include "tools/content/ZoneBand.h"

namespace qb::content::sound {

namespace {
using Voice = ZoneBand::Voice;

// The chord of every bar from a list of sections (degrees, one a bar).
std::vector<int> bars(std::initializer_list<std::vector<int>> sections) {
    std::vector<int> all;
    for (const auto& s : sections) all.insert(all.end(), s.begin(), s.end());
    return all;
}

std::vector<int> slice(const std::vector<int>& v, int from, int count) {
    return {v.begin() + from, v.begin() + from + count};
}

// The first `count` bars of a tune, its last note cut at the bar line.
std::vector<TuneNote> firstBars(const std::vector<TuneNote>& tune, int count) {
    std::vector<TuneNote> part;
    const double end = 16.0 * count;
    for (TuneNote n : tune)
        if (n.step < end) {
            n.length = std::min(n.length, end - n.step);
            part.push_back(n);
        }
    return part;
}

// Zone 2, sunset: E flat major, 100 BPM, 28 bars. Four-on-the-floor-less
// synth pop: kick on one and three, claps, octave bass, a wide saw lead.
Stereo Sunset() {
    const Key key{63, {0, 2, 4, 5, 7, 9, 11}};
    const std::vector<int> a = {0, 5, 3, 4, 0, 5, 3, 4}, b = {5, 3, 0, 4, 5, 3, 1, 4};
    const std::vector<int> chords = bars({slice(a, 0, 4), a, b, a});
    ZoneBand band(100, 28);
    Rng rng(0x5E7u);
    const auto themeA = Tune(key, a, {4, 2, 2, 4, 4, 6, 2, 4, 4}, 5, 12, rng);
    const auto themeB = Tune(key, b, {8, 4, 4, 2, 2, 4, 8}, 4, 11, rng);
    for (int bar = 0; bar < band.bars; ++bar) {
        const int c = chords[static_cast<size_t>(bar)];
        const double s = 16.0 * bar;
        band.kick(s, 0.75f);
        band.kick(s + 8, 0.75f);
        if (bar % 4 == 3) band.kick(s + 14, 0.45f);
        band.clap(s + 4, 0.5f);
        band.clap(s + 12, 0.5f);
        for (int k = 0; k < 16; k += 2) band.hat(s + k, k % 4 == 2 ? 0.22f : 0.12f, false, k % 3);
        if (bar % 8 == 4) band.crash(s, 0.25f);
        const int root = key.note(c) - 24;
        for (int k = 0; k < 8; ++k) band.bass(s + 2 * k, 1.5, root + (k % 2 ? 12 : 0), 0.42f);
        band.pad(s, 15.5, Chord(key, c, 62, true), 0.07f);
    }
    band.tune(4, themeA, Voice::SawLead, 0, 0.5f, 0.1f, 0.5f);
    band.tune(12, themeB, Voice::SawLead, 0, 0.48f, -0.1f, 0.6f);
    band.tune(20, themeA, Voice::SawLead, 0, 0.48f, 0.1f, 0.5f);
    band.tune(20, themeA, Voice::Keys, -12, 0.22f, -0.3f, 0.2f);
    return band.finish(3, 0.45f, 0.65f);
}

// Zone 3, aurora: E lydian, 84 BPM, 24 bars. No drum kit: a shaker, a soft
// pulse, bells in slow arpeggios and a breathy flute over a wide pad.
Stereo Aurora() {
    const Key key{64, {0, 2, 4, 6, 7, 9, 11}};
    const std::vector<int> a = {0, 1, 5, 1, 0, 1, 2, 4}, b = {2, 1, 0, 4, 5, 1, 0, 0};
    const std::vector<int> chords = bars({slice(a, 0, 4), a, b, slice(a, 0, 4)});
    ZoneBand band(84, 24);
    Rng rng(0xA0A0u);
    const auto themeA = Tune(key, a, {8, 4, 4, 12, 4}, 6, 12, rng);
    const auto themeB = Tune(key, b, {6, 6, 4, 4, 4, 8}, 5, 11, rng);
    static const int arp[8] = {0, 1, 2, 3, 2, 1, 2, 3};
    for (int bar = 0; bar < band.bars; ++bar) {
        const int c = chords[static_cast<size_t>(bar)];
        const double s = 16.0 * bar;
        band.kick(s, 0.35f);
        band.kick(s + 10, 0.22f);
        for (int k = 0; k < 16; k += 2) band.shaker(s + k, k % 4 == 0 ? 0.1f : 0.16f, 0.4f, k % 4);
        band.sub(s, 14, key.note(c) - 24, 0.5f);
        const std::vector<int> chord = Chord(key, c, 60, true);
        band.pad(s, 15.5, chord, 0.085f);
        for (int k = 0; k < 8; ++k)
            band.bell(s + 2 * k, chord[static_cast<size_t>(arp[k])] + 12, 0.09f, k % 2 ? 0.5f : -0.5f, 0.5f);
    }
    band.tune(4, themeA, Voice::Flute, 0, 0.3f, 0.0f, 0.5f);
    band.tune(12, themeB, Voice::Flute, 0, 0.3f, 0.0f, 0.6f);
    band.tune(20, firstBars(themeA, 4), Voice::Flute, 0, 0.28f, 0.0f, 0.5f);
    return band.finish(6, 0.5f, 0.8f);
}

// Zone 4, dawn: G major, 112 BPM, 32 bars. Light and bright: shaker
// sixteenths, electric piano stabs off the beat, plucked arpeggios and a
// piano tune.
Stereo Dawn() {
    const Key key{67, {0, 2, 4, 5, 7, 9, 11}};
    const std::vector<int> a = {0, 4, 5, 3, 0, 4, 3, 4}, b = {3, 4, 2, 5, 3, 4, 0, 0};
    const std::vector<int> chords = bars({slice(a, 0, 4), a, b, a, slice(b, 4, 4)});
    ZoneBand band(112, 32);
    Rng rng(0xDA3u);
    const auto themeA = Tune(key, a, {2, 2, 2, 2, 4, 4, 3, 3, 2, 8}, 0, 8, rng);
    const auto themeB = Tune(key, b, {4, 4, 2, 2, 4, 6, 2, 8}, 1, 9, rng);
    static const int arp[8] = {0, 1, 2, 1, 0, 2, 1, 2};
    for (int bar = 0; bar < band.bars; ++bar) {
        const int c = chords[static_cast<size_t>(bar)];
        const double s = 16.0 * bar;
        for (int k = 0; k < 16; k += 4) band.kick(s + k, 0.55f);
        band.snare(s + 12, 0.3f);
        // A fill leads the last bar back into the first.
        if (bar == band.bars - 1)
            for (int k = 13; k < 16; ++k) band.snare(s + k, 0.2f + 0.06f * static_cast<float>(k - 13));
        for (int k = 0; k < 16; ++k) band.shaker(s + k, k % 2 ? 0.1f : 0.17f, -0.3f, k % 4);
        const int root = key.note(c) - 36;
        band.bass(s, 3, root, 0.45f);
        band.bass(s + 6, 2, root, 0.35f);
        band.bass(s + 10, 3, root + 7, 0.4f);
        const std::vector<int> chord = Chord(key, c, 62);
        for (double off : {2.0, 6.0, 10.0, 14.0})
            for (int n : chord) band.keys(s + off, 1.5, n, 0.06f, 0.2f, 0.0f);
        if (bar >= 4)
            for (int k = 0; k < 8; ++k)
                band.pluck(s + 2 * k, 1.2, chord[static_cast<size_t>(arp[k])] + 12, 0.12f, -0.4f, 0.4f);
    }
    band.tune(4, themeA, Voice::Keys, 0, 0.28f, 0.1f, 0.35f);
    band.tune(12, themeB, Voice::Keys, 0, 0.28f, 0.1f, 0.4f);
    band.tune(20, themeA, Voice::Keys, 0, 0.28f, 0.1f, 0.35f);
    band.tune(20, themeA, Voice::Lead, -12, 0.12f, -0.2f, 0.0f);
    return band.finish(3, 0.35f, 0.5f);
}

// Zone 5, deep space: C sharp phrygian, 76 BPM, 20 bars. Slow and dark: a
// sub bass pulse, ticking hats, a half-time kick and a lone bell far off.
Stereo Nebula() {
    const Key key{61, {0, 1, 3, 5, 7, 8, 10}};
    const std::vector<int> a = {0, 1, 0, 6, 0, 1, 5, 6}, b = {5, 6, 0, 1};
    const std::vector<int> chords = bars({slice(a, 0, 4), a, b, slice(a, 0, 4)});
    ZoneBand band(76, 20);
    Rng rng(0x0EB1u);
    const auto themeA = Tune(key, a, {6, 6, 4, -8, 8}, 7, 13, rng);
    const auto themeB = Tune(key, b, {4, 4, 8, 12, 4}, 6, 12, rng);
    for (int bar = 0; bar < band.bars; ++bar) {
        const int c = chords[static_cast<size_t>(bar)];
        const double s = 16.0 * bar;
        band.kick(s, 0.6f);
        band.kick(s + 11, 0.35f);
        band.snare(s + 8, 0.2f);
        if (bar == band.bars - 1) {
            band.snare(s + 14, 0.18f);
            band.snare(s + 15, 0.24f);
        }
        for (int k = 0; k < 16; ++k) band.hat(s + k, k % 4 == 2 ? 0.14f : 0.05f, k == 14, k % 2);
        const int root = key.note(c) - 24;
        for (double off : {0.0, 3.0, 6.0, 10.0}) band.sub(s + off, 2.5, root, 0.55f);
        band.pad(s, 15.8, Chord(key, c, 56), 0.1f);
    }
    band.tune(4, themeA, Voice::Bell, 0, 0.2f, 0.3f, 0.9f);
    band.tune(12, themeB, Voice::Bell, 0, 0.2f, -0.3f, 0.9f);
    band.tune(12, themeB, Voice::Lead, -12, 0.1f, 0.0f, 0.4f);
    band.tune(16, firstBars(themeA, 4), Voice::Bell, 0, 0.2f, 0.3f, 0.9f);
    return band.finish(4, 0.6f, 0.8f);
}

// Zone 6, storm: F harmonic minor, 140 BPM, 40 bars. Driving: four on the
// floor, a rolling sixteenth bass, open hats, a saw lead doubled below.
Stereo Storm() {
    const Key key{65, {0, 2, 3, 5, 7, 8, 11}};
    const std::vector<int> a = {0, 5, 3, 4, 0, 5, 3, 4}, b = {3, 0, 5, 4, 3, 0, 1, 4};
    const std::vector<int> chords = bars({a, a, b, a, slice(b, 0, 4), slice(a, 4, 4)});
    ZoneBand band(140, 40);
    Rng rng(0x570Au);
    const auto themeA = Tune(key, a, {2, 2, 4, 2, 2, 4, 4, 4, 8}, 2, 10, rng);
    const auto themeB = Tune(key, b, {4, 4, 4, 2, 2, 6, 2, 8}, 3, 11, rng);
    for (int bar = 0; bar < band.bars; ++bar) {
        const int c = chords[static_cast<size_t>(bar)];
        const double s = 16.0 * bar;
        const bool breakdown = bar >= 32 && bar < 36;
        for (int k = 0; k < 16; k += breakdown ? 8 : 4) band.kick(s + k, 0.75f);
        band.snare(s + 4, breakdown ? 0.25f : 0.55f);
        band.snare(s + 12, 0.55f);
        if (bar % 4 == 3)
            for (int k = 13; k < 16; ++k) band.snare(s + k, 0.25f + 0.08f * static_cast<float>(k - 13));
        for (int k = 2; k < 16; k += 4) band.hat(s + k, 0.14f, true, k % 3);
        for (int k = 1; k < 16; k += 2) band.hat(s + k, 0.08f, false, k % 2);
        // No crash on the very first bar: it would jump out at every loop.
        if (bar % 8 == 0 && bar > 0) band.crash(s, 0.3f);
        const int root = key.note(c) - 36;
        for (int k = 0; k < 16; ++k)
            band.bass(s + k, 0.8, root + (k % 4 == 3 ? 12 : 0), k % 4 ? 0.32f : 0.45f);
        band.pad(s, 15.5, Chord(key, c, 60), breakdown ? 0.12f : 0.06f);
    }
    band.tune(8, themeA, Voice::SawLead, 0, 0.45f, 0.15f, 0.4f);
    band.tune(8, themeA, Voice::Lead, -12, 0.14f, -0.2f, 0.0f);
    band.tune(16, themeB, Voice::SawLead, 0, 0.45f, -0.15f, 0.4f);
    band.tune(24, themeA, Voice::SawLead, 0, 0.45f, 0.15f, 0.4f);
    band.tune(24, themeA, Voice::Lead, 12, 0.1f, 0.0f, 0.3f);
    band.tune(32, firstBars(themeB, 4), Voice::Keys, 0, 0.25f, 0.0f, 0.6f);
    return band.finish(3, 0.3f, 0.5f);
}
}  // namespace

std::vector<ZonePiece> ZonePieces() {
    return {{"track02.ogg", 0x51B02, Sunset},
            {"track03.ogg", 0x51B03, Aurora},
            {"track04.ogg", 0x51B04, Dawn},
            {"track05.ogg", 0x51B05, Nebula},
            {"track06.ogg", 0x51B06, Storm}};
}

}  // namespace qb::content::sound
