// Sound output: effect buffers on their own channels and one music stream.
// The real device is SDL2_mixer; the headless one records what would sound.
#pragma once

#include <string>

namespace qb {

class AudioDevice {
public:
    virtual ~AudioDevice() = default;
    // Opens the output. False when there is no usable sound device.
    virtual bool open() = 0;
    virtual void close() = 0;
    // Effects: slot numbers 1..9; false when the WAV cannot be loaded.
    virtual bool loadEffect(int slot, const std::string& path) = 0;
    virtual void playEffect(int slot) = 0;  // from the current position
    virtual void stopEffect(int slot) = 0;
    virtual void rewindEffect(int slot) = 0;  // next play starts at the beginning
    virtual bool effectPlaying(int slot) = 0;
    virtual void setEffectGain(int slot, float gain) = 0;  // 0..1
    // Music pieces: false when the Ogg file cannot be opened.
    virtual bool loadMusic(int piece, const std::string& path) = 0;
    virtual void playMusic(int piece, bool loop) = 0;  // continues from its position
    virtual void pauseMusic() = 0;
    virtual void stopMusic(int piece) = 0;      // and rewind it
    virtual void setMusicGain(float gain) = 0;  // 0..1
};

}  // namespace qb
