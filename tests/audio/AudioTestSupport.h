// Helpers for the sound tests: scratch game folders with test tones, and the
// measurements made on what the mixer wrote (SDL's disk driver sends the
// mixed output to a file: 16-bit stereo at 44.1 kHz, in real time).
#pragma once

#include <unistd.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "persist/optionsDat.h"
#include "platform/QuorbitDebug.h"
#include "tests/support/TestFiles.h"

namespace qb::test {

constexpr int kRate = 44100;

// One tone segment: frequency and duration; a test sound is a list of them.
struct Segment {
    double hz;
    double seconds;
};

// A mono 16-bit WAV of sine segments at the given amplitude (0..1).
inline void WriteToneWav(const std::string& path, const std::vector<Segment>& segments, double amplitude) {
    std::vector<int16_t> pcm;
    double phase = 0;
    for (const Segment& s : segments) {
        const auto n = static_cast<size_t>(s.seconds * kRate);
        for (size_t i = 0; i < n; ++i) {
            pcm.push_back(static_cast<int16_t>(std::lrint(amplitude * 32767.0 * std::sin(phase))));
            phase += 2.0 * 3.14159265358979 * s.hz / kRate;
        }
    }
    const auto data = static_cast<uint32_t>(pcm.size() * 2);
    std::ofstream out(path, std::ios::binary);
    auto u32 = [&out](uint32_t v) { out.write(reinterpret_cast<const char*>(&v), 4); };
    auto u16 = [&out](uint16_t v) { out.write(reinterpret_cast<const char*>(&v), 2); };
    out.write("RIFF", 4);
    u32(36 + data);
    out.write("WAVEfmt ", 8);
    u32(16);
    u16(1);
    u16(1);
    u32(kRate);
    u32(kRate * 2);
    u16(2);
    u16(16);
    out.write("data", 4);
    u32(data);
    out.write(reinterpret_cast<const char*>(pcm.data()), data);
}

inline const char* const kEffectFiles[] = {"Jump.wav",     "fall.wav",      "getstar.wav",
                                           "blowup.wav",   "bouncepad.wav", "turboplatform.wav",
                                           "rollover.wav", "transit.wav"};

// A game folder whose every effect is a 1 kHz tone of `seconds`, and whose
// music pieces are tones too: the mixer recognises a stream by its content,
// so a WAV stands in for the Ogg file and its pitch tells the pieces apart.
inline std::string ToneGameFolder(const std::string& name, double effectSeconds = 0.3) {
    const std::string dir = FreshDir("audio-" + name);
    for (const char* sub : {"sfx", "music"}) std::filesystem::create_directory(dir + sub);
    for (const char* f : kEffectFiles) WriteToneWav(dir + "sfx/" + f, {{1000, effectSeconds}}, 0.5);
    WriteToneWav(dir + "music/track01.ogg", {{440, 0.3}, {880, 2.0}}, 0.5);
    for (int zone = 2; zone <= 6; ++zone)
        WriteToneWav(dir + "music/track0" + std::to_string(zone) + ".ogg", {{110.0 * zone, 0.5}}, 0.3);
    WriteToneWav(dir + "music/winlevel.ogg", {{2000, 0.3}}, 0.5);
    return dir;
}

// Interleaved stereo samples of the mixed output, as fractions of full scale.
struct Capture {
    std::vector<float> samples;  // L R L R ...
    size_t frames() const { return samples.size() / 2; }
    // The frames [from, to) of the left channel.
    std::vector<float> left(size_t from, size_t to) const {
        std::vector<float> out;
        for (size_t i = from; i < to && i < frames(); ++i) out.push_back(samples[2 * i]);
        return out;
    }
};

// What SDL's disk driver has written so far: 16-bit stereo frames.
inline size_t FramesWritten(const std::string& rawFile) {
    std::error_code ec;
    const auto bytes = std::filesystem::file_size(rawFile, ec);
    return ec ? 0 : static_cast<size_t>(bytes / 4);
}

inline Capture ReadCapture(const std::string& rawFile) {
    Capture c;
    const std::string raw = ReadFile(rawFile);
    for (size_t i = 0; i + 1 < raw.size(); i += 2) {
        int16_t v;
        std::memcpy(&v, raw.data() + i, 2);
        c.samples.push_back(static_cast<float>(v) / 32768.0f);
    }
    return c;
}

inline double Rms(const std::vector<float>& s) {
    if (s.empty()) return 0;
    double sum = 0;
    for (float v : s) sum += static_cast<double>(v) * v;
    return std::sqrt(sum / static_cast<double>(s.size()));
}

inline float PeakOf(const std::vector<float>& s) {
    float p = 0;
    for (float v : s) p = std::max(p, std::fabs(v));
    return p;
}

// The frequency of a single tone from its zero crossings (0 for silence).
inline double ToneHz(const std::vector<float>& s) {
    if (s.size() < 2 || PeakOf(s) < 0.005f) return 0;
    int crossings = 0;
    for (size_t i = 1; i < s.size(); ++i)
        if ((s[i - 1] < 0) != (s[i] < 0)) ++crossings;
    return crossings / 2.0 * kRate / static_cast<double>(s.size());
}

inline void SleepMs(int ms) {
    std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

}  // namespace qb::test
