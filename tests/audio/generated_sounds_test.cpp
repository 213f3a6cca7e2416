// The generated sounds of the game folder, decoded by the mixer itself: each
// one loads, lasts about as long as its event, starts and ends on silence and
// stays below full scale; the zone pieces loop without a jump.
#include <SDL.h>
#include <SDL_mixer.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>

#include "tests/audio/AudioTestSupport.h"

namespace qb {
namespace {

const std::string kGame = std::string(QUORBIT_GAME_DIR) + "/";

class GeneratedSounds : public ::testing::Test {
protected:
    static void SetUpTestSuite() {
        // Decoding needs an open mixer, not a sound card.
        setenv("SDL_AUDIODRIVER", "dummy", 1);
        ASSERT_EQ(SDL_InitSubSystem(SDL_INIT_AUDIO), 0) << SDL_GetError();
        ASSERT_EQ(Mix_OpenAudio(test::kRate, AUDIO_S16SYS, 2, 1024), 0) << Mix_GetError();
        int rate = 0, channels = 0;
        Uint16 format = 0;
        Mix_QuerySpec(&rate, &format, &channels);
        ASSERT_EQ(rate, test::kRate);
        ASSERT_EQ(format, AUDIO_S16SYS);
        ASSERT_EQ(channels, 2);
    }
    static void TearDownTestSuite() {
        Mix_CloseAudio();
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
    }
    // The whole file decoded to stereo frames (left channel only: the
    // effects are mono and the music is mixed symmetrically enough).
    static test::Capture decode(const std::string& path) {
        test::Capture c;
        Mix_Chunk* chunk = Mix_LoadWAV(path.c_str());
        EXPECT_NE(chunk, nullptr) << path << ": " << Mix_GetError();
        if (!chunk) return c;
        const size_t n = chunk->alen / 2;
        for (size_t i = 0; i < n; ++i) {
            int16_t v;
            std::memcpy(&v, chunk->abuf + 2 * i, 2);
            c.samples.push_back(static_cast<float>(v) / 32768.0f);
        }
        Mix_FreeChunk(chunk);
        return c;
    }
};

struct Expected {
    const char* file;
    double minSeconds, maxSeconds;
};

// The effects and the win jingle: each about as long as its event, audible,
// below full scale and free of clicks at either end; the menu's blip is
// quieter than a star, a star quieter than a blow-up.
TEST_F(GeneratedSounds, EffectsAndTheJingleAreShortCleanAndBelowFullScale) {
    const Expected sounds[] = {
        {"sfx/Jump.wav", 0.1, 0.5},      {"sfx/fall.wav", 0.6, 2.0},      {"sfx/getstar.wav", 0.2, 1.0},
        {"sfx/blowup.wav", 0.6, 2.5},    {"sfx/bouncepad.wav", 0.2, 1.0}, {"sfx/turboplatform.wav", 0.2, 1.2},
        {"sfx/rollover.wav", 0.02, 0.2}, {"sfx/transit.wav", 0.1, 0.6},   {"music/winlevel.ogg", 2.0, 8.0}};
    std::map<std::string, float> peaks;
    for (const Expected& e : sounds) {
        SCOPED_TRACE(e.file);
        const test::Capture c = decode(kGame + e.file);
        const double seconds = static_cast<double>(c.frames()) / test::kRate;
        EXPECT_GE(seconds, e.minSeconds);
        EXPECT_LE(seconds, e.maxSeconds);
        const auto all = c.left(0, c.frames());
        peaks[e.file] = test::PeakOf(all);
        EXPECT_LT(peaks[e.file], 0.95f);
        EXPECT_GT(peaks[e.file], 0.2f) << "audible";
        ASSERT_GT(all.size(), 2u);
        // Starting or stopping away from zero is a click.
        EXPECT_LT(std::fabs(all.front()), 0.01f);
        EXPECT_LT(std::fabs(all.back()), 0.01f);
    }
    EXPECT_LT(peaks["sfx/rollover.wav"], peaks["sfx/getstar.wav"]);
    EXPECT_LT(peaks["sfx/getstar.wav"], peaks["sfx/blowup.wav"]);
}

// The largest level change in dB between a window and the next one, with
// the boundary moved through the piece in 1 ms steps (so that every beat of
// the music itself falls on a boundary as the wrap does).
double LargestLevelStep(const std::vector<float>& s, size_t window) {
    std::vector<double> energy(s.size() + 1, 0.0);
    for (size_t i = 0; i < s.size(); ++i) energy[i + 1] = energy[i] + static_cast<double>(s[i]) * s[i];
    double largest = 0;
    for (size_t at = window; at + window <= s.size(); at += test::kRate / 1000) {
        const double before = energy[at] - energy[at - window], after = energy[at + window] - energy[at];
        if (before > 0 && after > 0)
            largest = std::max(largest, std::fabs(10.0 * std::log10(after / before)));
    }
    return largest;
}

// The six zone pieces: a minute or two each, as loud as each other, and each
// a loop: the last 50 ms lead into the first 50 ms with no click, no gap and
// no jump in level larger than the piece makes anywhere within itself.
TEST_F(GeneratedSounds, TheZonePiecesLoopSeamlesslyAtOneLoudness) {
    std::vector<double> loudness;
    for (int zone = 1; zone <= 6; ++zone) {
        const std::string file = "music/track0" + std::to_string(zone) + ".ogg";
        SCOPED_TRACE(file);
        const test::Capture c = decode(kGame + file);
        const size_t n = c.frames();
        ASSERT_GT(n, static_cast<size_t>(test::kRate));
        EXPECT_GE(static_cast<double>(n) / test::kRate, 60.0);
        EXPECT_LE(static_cast<double>(n) / test::kRate, 120.0);
        const auto all = c.left(0, n);
        EXPECT_LT(test::PeakOf(all), 0.98f);
        const double rms = test::Rms(all);
        EXPECT_GT(rms, 0.05) << "a tune, not a whisper";
        loudness.push_back(20.0 * std::log10(rms));

        const size_t window = test::kRate / 20;
        const double end = test::Rms(c.left(n - window, n));
        const double start = test::Rms(c.left(0, window));
        EXPECT_GT(end, 0.1 * rms) << "no gap before the wrap";
        EXPECT_GT(start, 0.1 * rms) << "no gap after it";
        EXPECT_LE(std::fabs(20.0 * std::log10(start / end)), LargestLevelStep(all, window))
            << "the wrap is no more sudden than the music itself";

        // No click: the sample step at the wrap is no larger than those around it.
        float around = 0;
        for (size_t i = n - 200; i + 1 < n; ++i) around = std::max(around, std::fabs(all[i + 1] - all[i]));
        for (size_t i = 0; i + 1 < 200; ++i) around = std::max(around, std::fabs(all[i + 1] - all[i]));
        EXPECT_LE(std::fabs(all[0] - all[n - 1]), 1.5f * around + 0.002f);
    }
    ASSERT_EQ(loudness.size(), 6u);
    const auto [quiet, loud] = std::minmax_element(loudness.begin(), loudness.end());
    EXPECT_LT(*loud - *quiet, 2.0) << "dB RMS between the loudest and the quietest piece";
}

}  // namespace
}  // namespace qb
