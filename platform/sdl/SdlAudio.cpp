#include "platform/sdl/SdlAudio.h"

#include <SDL.h>
#include <SDL_mixer.h>

#include <cmath>

#include "platform/AssetLimits.h"

namespace qb {

namespace {
int mixerVolume(float gain) {
    if (!(gain > 0.0f)) return 0;
    if (gain >= 1.0f) return MIX_MAX_VOLUME;
    return static_cast<int>(std::nearbyint(gain * static_cast<float>(MIX_MAX_VOLUME)));
}
}  // namespace

SdlAudio::~SdlAudio() {
    close();
}

bool SdlAudio::open() {
    if (open_) return true;
    if (SDL_InitSubSystem(SDL_INIT_AUDIO) != 0) return false;
    // 1024 frames: about 23 ms of latency, short enough for a jump to feel instant.
    if (Mix_OpenAudio(44100, AUDIO_S16SYS, 2, 1024) != 0) {
        SDL_QuitSubSystem(SDL_INIT_AUDIO);
        return false;
    }
    Mix_Init(MIX_INIT_OGG);
    Mix_AllocateChannels(kSlots);
    // Channel 0 is never used by an effect; keep it out of SDL_mixer's own picks.
    Mix_ReserveChannels(kSlots);
    for (int ch = 0; ch < kSlots; ++ch) Mix_Volume(ch, MIX_MAX_VOLUME);
    Mix_VolumeMusic(MIX_MAX_VOLUME);
    open_ = true;
    currentPiece_ = 0;
    musicState_ = MusicState::Stopped;
    return true;
}

void SdlAudio::freeAll() {
    Mix_HaltMusic();
    Mix_HaltChannel(-1);
    for (auto& m : music_) {
        if (m) Mix_FreeMusic(m);
        m = nullptr;
    }
    for (int slot = 0; slot < kSlots; ++slot) {
        if (chunks_[slot]) Mix_FreeChunk(chunks_[slot]);
        chunks_[slot] = nullptr;
        held_[slot] = false;
    }
}

void SdlAudio::close() {
    if (!open_) return;
    freeAll();
    Mix_CloseAudio();
    Mix_Quit();
    SDL_QuitSubSystem(SDL_INIT_AUDIO);
    open_ = false;
    currentPiece_ = 0;
    musicState_ = MusicState::Stopped;
}

bool SdlAudio::loadEffect(int slot, const std::string& path) {
    if (!open_ || slot <= 0 || slot >= kSlots) return false;
    std::string why;
    if (!CheckWaveFile(path, why)) return false;
    Mix_Chunk* chunk = Mix_LoadWAV(path.c_str());
    if (!chunk) return false;
    Mix_HaltChannel(slot);
    if (chunks_[slot]) Mix_FreeChunk(chunks_[slot]);
    chunks_[slot] = chunk;
    held_[slot] = false;
    return true;
}

void SdlAudio::playEffect(int slot) {
    if (!validSlot(slot)) return;
    if (held_[slot]) {
        held_[slot] = false;
        Mix_Resume(slot);
        return;
    }
    if (Mix_Playing(slot) != 0) return;  // already sounding: playing again changes nothing
    Mix_PlayChannel(slot, chunks_[slot], 0);
}

void SdlAudio::stopEffect(int slot) {
    if (!validSlot(slot)) return;
    // A stopped buffer keeps its position; pausing the channel keeps it too.
    if (Mix_Playing(slot) != 0 && Mix_Paused(slot) == 0) {
        Mix_Pause(slot);
        held_[slot] = true;
    }
}

void SdlAudio::rewindEffect(int slot) {
    if (!validSlot(slot)) return;
    const bool sounding = Mix_Playing(slot) != 0 && Mix_Paused(slot) == 0;
    Mix_HaltChannel(slot);
    held_[slot] = false;
    // Rewinding a sounding effect keeps it sounding, from its start.
    if (sounding) Mix_PlayChannel(slot, chunks_[slot], 0);
}

bool SdlAudio::effectPlaying(int slot) {
    if (!validSlot(slot)) return false;
    return Mix_Playing(slot) != 0 && Mix_Paused(slot) == 0;
}

void SdlAudio::setEffectGain(int slot, float gain) {
    if (!open_ || slot <= 0 || slot >= kSlots) return;
    Mix_Volume(slot, mixerVolume(gain));
}

bool SdlAudio::loadMusic(int piece, const std::string& path) {
    if (!open_ || piece <= 0 || piece >= kPieces) return false;
    // Recognised by content, not by the file's extension.
    SDL_RWops* file = SDL_RWFromFile(path.c_str(), "rb");
    if (!file) return false;
    Mix_Music* music = Mix_LoadMUS_RW(file, 1);
    if (!music) return false;
    if (currentPiece_ == piece) {
        Mix_HaltMusic();
        currentPiece_ = 0;
        musicState_ = MusicState::Stopped;
    }
    if (music_[piece]) Mix_FreeMusic(music_[piece]);
    music_[piece] = music;
    return true;
}

void SdlAudio::playMusic(int piece, bool loop) {
    if (!validPiece(piece)) return;
    if (currentPiece_ == piece) {
        if (musicState_ == MusicState::Paused) {
            Mix_ResumeMusic();
            musicState_ = MusicState::Playing;
            return;
        }
        // Still sounding, or a once-only piece that has reached its end: the
        // position stays where it is.
        if (musicState_ == MusicState::Playing) return;
    } else if (currentPiece_ != 0) {
        Mix_HaltMusic();
    }
    currentPiece_ = piece;
    musicState_ =
        Mix_PlayMusic(music_[piece], loop ? -1 : 1) == 0 ? MusicState::Playing : MusicState::Stopped;
}

void SdlAudio::pauseMusic() {
    if (!open_ || currentPiece_ == 0 || musicState_ != MusicState::Playing) return;
    Mix_PauseMusic();
    musicState_ = MusicState::Paused;
}

void SdlAudio::stopMusic(int piece) {
    if (!validPiece(piece) || currentPiece_ != piece) return;
    Mix_HaltMusic();
    Mix_ResumeMusic();  // a paused stream must not stay paused for the next piece
    currentPiece_ = 0;
    musicState_ = MusicState::Stopped;
}

void SdlAudio::setMusicGain(float gain) {
    if (!open_) return;
    Mix_VolumeMusic(mixerVolume(gain));
}

}  // namespace qb
