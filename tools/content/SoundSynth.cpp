#include "tools/content/SoundSynth.h"

#include <vorbis/vorbisenc.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "persist/AtomicFile.h"

namespace qb::content::sound {

// --- filter, oscillators, envelope ---------------------------------------------------

Svf::Out Svf::process(float x, float cutoffHz, float resonance) {
    if (cutoffHz != lastCutoff_) {
        const double fc = std::clamp(static_cast<double>(cutoffHz), 10.0, kRate * 0.45);
        g_ = static_cast<float>(std::tan(kPi * fc / kRate));
        lastCutoff_ = cutoffHz;
    }
    const float g = g_;
    const float k = 2.0f - 2.0f * std::clamp(resonance, 0.0f, 0.98f);
    const float a1 = 1.0f / (1.0f + g * (g + k));
    const float a2 = g * a1;
    const float a3 = g * a2;
    const float v3 = x - ic2_;
    const float v1 = a1 * ic1_ + a2 * v3;
    const float v2 = ic2_ + a2 * ic1_ + a3 * v3;
    ic1_ = 2.0f * v1 - ic1_;
    ic2_ = 2.0f * v2 - ic2_;
    return {v2, v1, x - k * v1 - v2};
}

namespace {
// The PolyBLEP correction around a discontinuity at phase 0.
double polyBlep(double t, double dt) {
    if (t < dt) {
        t /= dt;
        return t + t - t * t - 1.0;
    }
    if (t > 1.0 - dt) {
        t = (t - 1.0) / dt;
        return t * t + t + t + 1.0;
    }
    return 0.0;
}
}  // namespace

double Osc::advance(double hz) {
    const double p = phase_;
    phase_ += hz / kRate;
    phase_ -= std::floor(phase_);
    return p;
}

float Osc::sine(double hz) {
    return static_cast<float>(std::sin(2.0 * kPi * advance(hz)));
}

float Osc::saw(double hz) {
    const double dt = hz / kRate;
    const double p = advance(hz);
    return static_cast<float>(2.0 * p - 1.0 - polyBlep(p, dt));
}

float Osc::pulse(double hz, double width) {
    const double dt = hz / kRate;
    const double p = advance(hz);
    double v = p < width ? 1.0 : -1.0;
    v += polyBlep(p, dt);
    double q = p - width;
    if (q < 0) q += 1.0;
    v -= polyBlep(q, dt);
    return static_cast<float>(v - (2.0 * width - 1.0));  // no DC whatever the width
}

float Osc::triangle(double hz) {
    // A leaky-integrated square: band-limited like the square itself.
    const float sq = pulse(hz, 0.5);
    triState_ = 0.999f * triState_ + static_cast<float>(4.0 * hz / kRate) * sq;
    return triState_;
}

float Adsr::at(double t, double gateSeconds) const {
    auto held = [this](double u) -> double {
        if (u < attack) return u / attack;
        const double d = (u - attack) / decay;
        return sustain + (1.0 - sustain) * std::exp(-3.0 * d);
    };
    if (t < 0) return 0.0f;
    if (t < gateSeconds) return static_cast<float>(held(t));
    const double r = (t - gateSeconds) / release;
    if (r >= 1.0) return 0.0f;
    return static_cast<float>(held(gateSeconds) * (1.0 - r) * (1.0 - r));
}

double NoteHz(double midi) {
    return 440.0 * std::pow(2.0, (midi - 69.0) / 12.0);
}

size_t Samples(double seconds) {
    return static_cast<size_t>(std::llround(seconds * kRate));
}

// --- buffers -------------------------------------------------------------------------

void Stereo::mix(const Stereo& other, float gain) {
    const size_t n = std::min(size(), other.size());
    for (size_t i = 0; i < n; ++i) {
        l[i] += gain * other.l[i];
        r[i] += gain * other.r[i];
    }
}

void FoldLoop(std::vector<float>& s, size_t loopLength) {
    for (size_t i = loopLength; i < s.size(); ++i) s[i % loopLength] += s[i];
    s.resize(loopLength);
}

void FoldLoop(Stereo& s, size_t loopLength) {
    FoldLoop(s.l, loopLength);
    FoldLoop(s.r, loopLength);
}

float Peak(const std::vector<float>& s) {
    float p = 0;
    for (float v : s) p = std::max(p, std::fabs(v));
    return p;
}

float Peak(const Stereo& s) {
    return std::max(Peak(s.l), Peak(s.r));
}

void Scale(std::vector<float>& s, float gain) {
    for (float& v : s) v *= gain;
}

void Scale(Stereo& s, float gain) {
    Scale(s.l, gain);
    Scale(s.r, gain);
}

void FadeEdges(std::vector<float>& s, double inSeconds, double outSeconds) {
    const size_t in = std::min(Samples(inSeconds), s.size());
    const size_t out = std::min(Samples(outSeconds), s.size());
    for (size_t i = 0; i < in; ++i) s[i] *= static_cast<float>(i) / static_cast<float>(in);
    for (size_t i = 0; i < out; ++i) s[s.size() - 1 - i] *= static_cast<float>(i) / static_cast<float>(out);
}

void RemoveDc(std::vector<float>& s) {
    // A gentle high-pass at 20 Hz, run forwards: inaudible on the sound itself.
    const float a = static_cast<float>(std::exp(-2.0 * kPi * 20.0 / kRate));
    float prevIn = 0, prevOut = 0;
    for (float& v : s) {
        const float y = v - prevIn + a * prevOut;
        prevIn = v;
        prevOut = y;
        v = y;
    }
}

// --- writers -------------------------------------------------------------------------

namespace {
void put16(unsigned char* p, uint32_t v) {
    p[0] = static_cast<unsigned char>(v & 0xFF);
    p[1] = static_cast<unsigned char>((v >> 8) & 0xFF);
}
void put32(unsigned char* p, uint32_t v) {
    put16(p, v & 0xFFFF);
    put16(p + 2, v >> 16);
}
void putTag(unsigned char* p, const char* tag) {
    for (int i = 0; i < 4; ++i) p[i] = static_cast<unsigned char>(tag[i]);
}

int16_t toPcm(float v) {
    const float c = std::clamp(v, -1.0f, 1.0f);
    return static_cast<int16_t>(std::lrint(c * 32767.0f));
}

void writeBytes(const std::string& path, const std::vector<unsigned char>& bytes) {
    if (!WriteFileAtomically(path, bytes)) throw std::runtime_error("cannot write " + path);
}
}  // namespace

void WriteWav16(const std::string& path, const std::vector<float>& mono) {
    const auto dataBytes = static_cast<uint32_t>(mono.size() * 2);
    std::vector<unsigned char> b(44 + dataBytes);
    unsigned char* h = b.data();
    putTag(h, "RIFF");
    put32(h + 4, 36 + dataBytes);
    putTag(h + 8, "WAVE");
    putTag(h + 12, "fmt ");
    put32(h + 16, 16);
    put16(h + 20, 1);  // PCM
    put16(h + 22, 1);  // mono
    put32(h + 24, kRate);
    put32(h + 28, kRate * 2);
    put16(h + 32, 2);
    put16(h + 34, 16);
    putTag(h + 36, "data");
    put32(h + 40, dataBytes);
    for (size_t i = 0; i < mono.size(); ++i) put16(h + 44 + 2 * i, static_cast<uint16_t>(toPcm(mono[i])));
    writeBytes(path, b);
}

void WriteOggVorbis(const std::string& path, const Stereo& s, float quality, int serial) {
    std::vector<unsigned char> out;
    auto writePage = [&out](const ogg_page& og) {
        out.insert(out.end(), og.header, og.header + og.header_len);
        out.insert(out.end(), og.body, og.body + og.body_len);
    };

    vorbis_info vi;
    vorbis_info_init(&vi);
    if (vorbis_encode_init_vbr(&vi, 2, kRate, quality) != 0) {
        vorbis_info_clear(&vi);
        throw std::runtime_error("vorbis encoder refused its settings");
    }
    vorbis_comment vc;
    vorbis_comment_init(&vc);
    vorbis_comment_add_tag(&vc, "ENCODER", "quorbit-content");
    vorbis_dsp_state vd;
    vorbis_block vb;
    vorbis_analysis_init(&vd, &vi);
    vorbis_block_init(&vd, &vb);
    ogg_stream_state os;
    ogg_stream_init(&os, serial);

    ogg_packet header, comments, codebooks;
    vorbis_analysis_headerout(&vd, &vc, &header, &comments, &codebooks);
    ogg_stream_packetin(&os, &header);
    ogg_stream_packetin(&os, &comments);
    ogg_stream_packetin(&os, &codebooks);
    ogg_page og;
    while (ogg_stream_flush(&os, &og) != 0) writePage(og);

    auto drain = [&]() {
        ogg_packet op;
        while (vorbis_analysis_blockout(&vd, &vb) == 1) {
            vorbis_analysis(&vb, nullptr);
            vorbis_bitrate_addblock(&vb);
            while (vorbis_bitrate_flushpacket(&vd, &op) == 1) {
                ogg_stream_packetin(&os, &op);
                while (ogg_stream_pageout(&os, &og) != 0) writePage(og);
            }
        }
    };
    const size_t chunk = 4096;
    for (size_t at = 0; at < s.size(); at += chunk) {
        const size_t n = std::min(chunk, s.size() - at);
        float** buf = vorbis_analysis_buffer(&vd, static_cast<int>(n));
        std::copy(s.l.begin() + static_cast<long>(at), s.l.begin() + static_cast<long>(at + n), buf[0]);
        std::copy(s.r.begin() + static_cast<long>(at), s.r.begin() + static_cast<long>(at + n), buf[1]);
        vorbis_analysis_wrote(&vd, static_cast<int>(n));
        drain();
    }
    vorbis_analysis_wrote(&vd, 0);
    drain();
    while (ogg_stream_flush(&os, &og) != 0) writePage(og);

    ogg_stream_clear(&os);
    vorbis_block_clear(&vb);
    vorbis_dsp_clear(&vd);
    vorbis_comment_clear(&vc);
    vorbis_info_clear(&vi);
    writeBytes(path, out);
}

}  // namespace qb::content::sound
