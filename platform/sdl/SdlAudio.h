// The sound output on SDL2_mixer: every effect slot owns the mixer channel of
// the same number, so stopping, rewinding and restarting one effect never
// touches another; the music pieces share SDL_mixer's single music stream.
#pragma once

#include <string>

#include "platform/AudioDevice.h"

struct Mix_Chunk;
struct _Mix_Music;

namespace qb {

class SdlAudio : public AudioDevice {
public:
    SdlAudio() = default;
    ~SdlAudio() override;
    SdlAudio(const SdlAudio&) = delete;
    SdlAudio& operator=(const SdlAudio&) = delete;

    bool open() override;
    void close() override;
    bool loadEffect(int slot, const std::string& path) override;
    void playEffect(int slot) override;
    void stopEffect(int slot) override;
    void rewindEffect(int slot) override;
    bool effectPlaying(int slot) override;
    void setEffectGain(int slot, float gain) override;
    bool loadMusic(int piece, const std::string& path) override;
    void playMusic(int piece, bool loop) override;
    void pauseMusic() override;
    void stopMusic(int piece) override;
    void setMusicGain(float gain) override;

    bool isOpen() const { return open_; }

private:
    static constexpr int kSlots = 10;  // effect slots 1..9 on channels 1..9
    static constexpr int kPieces = 8;  // music pieces 1..7
    enum class MusicState { Stopped, Playing, Paused };

    bool validSlot(int slot) const { return open_ && slot > 0 && slot < kSlots && chunks_[slot]; }
    bool validPiece(int piece) const { return open_ && piece > 0 && piece < kPieces && music_[piece]; }
    void freeAll();

    bool open_ = false;
    Mix_Chunk* chunks_[kSlots] = {};
    bool held_[kSlots] = {};  // stopped mid-sound: the next play continues there
    _Mix_Music* music_[kPieces] = {};
    int currentPiece_ = 0;  // the piece on the music stream
    MusicState musicState_ = MusicState::Stopped;
};

}  // namespace qb
