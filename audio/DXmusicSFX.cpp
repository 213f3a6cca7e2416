#include "audio/DXmusicSFX.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "persist/optionsDat.h"
#include "platform/AudioDevice.h"
#include "platform/QuorbitDebug.h"

namespace qb {

namespace {
// Load order of the effects; number 2 never had a sound.
constexpr int kEffectNumbers[] = {1, 3, 4, 5, 6, 7, 8, 9};
// The roll-over blip keeps its full level: it is the menu's own feedback and
// must stay audible even when the player turns the game effects down.
constexpr int kVolumeEffects[] = {1, 3, 5, 4, 6, 7, 9};
}  // namespace

DXmusicSFX::DXmusicSFX(AudioDevice& device, optionsDat& options, QuorbitDebug& debug, std::string gameDir)
    : device_(device), options_(options), debug_(debug), gameDir_(std::move(gameDir)) {
    if (!gameDir_.empty() && gameDir_.back() != '/') gameDir_ += '/';
}

DXmusicSFX::~DXmusicSFX() {
    if (opened_) device_.close();
}

const char* DXmusicSFX::EffectFile(int number) {
    switch (number) {
        case 1:
            return "sfx/Jump.wav";
        case 3:
            return "sfx/fall.wav";
        case 4:
            return "sfx/getstar.wav";
        case 5:
            return "sfx/blowup.wav";
        case 6:
            return "sfx/bouncepad.wav";
        case 7:
            return "sfx/turboplatform.wav";
        case 8:
            return "sfx/rollover.wav";
        case 9:
            return "sfx/transit.wav";
        default:
            return "";
    }
}

const char* DXmusicSFX::MusicFile(int piece) {
    static const char* const files[] = {"",
                                        "music/track01.ogg",
                                        "music/track02.ogg",
                                        "music/track03.ogg",
                                        "music/track04.ogg",
                                        "music/track05.ogg",
                                        "music/track06.ogg",
                                        "music/winlevel.ogg"};
    return piece >= MusicTrack && piece <= MusicWin ? files[piece] : "";
}

int16_t DXmusicSFX::ZoneMusic(int32_t zone) {
    return zone >= 1 && zone <= MusicLastZone ? static_cast<int16_t>(zone) : int16_t{MusicTrack};
}

float DXmusicSFX::SfxGain(int32_t hundredthsOfDecibel) {
    return static_cast<float>(std::pow(10.0, static_cast<double>(hundredthsOfDecibel) / 2000.0));
}

bool DXmusicSFX::InitSound() {
    SoundReady = false;
    if (!opened_) opened_ = device_.open();
    if (!opened_) return false;
    for (int number : kEffectNumbers) {
        if (!device_.loadEffect(number, gameDir_ + EffectFile(number))) return false;
    }
    SoundReady = true;
    SfxMuted = false;
    // A piece that cannot be opened stays silent; nothing else depends on it.
    for (int piece = MusicTrack; piece <= MusicWin; ++piece)
        device_.loadMusic(piece, gameDir_ + MusicFile(piece));
    SetSfxVolume(options_.Options.SfxVolume);
    SetMusicVolume(options_.Options.MusicVolume);
    return true;
}

void DXmusicSFX::PlayEffect(int16_t Number) {
    if (!SoundReady || SfxMuted || Number < 1 || Number > 9) return;
    switch (Number) {
        case SfxJump:
        case SfxGetStar:
        case SfxBouncePad:
        case SfxTurboPlatform:
        case SfxRollover:
        case SfxTransit:
            device_.stopEffect(Number);
            device_.rewindEffect(Number);
            device_.playEffect(Number);
            break;
        case SfxFall:
            device_.rewindEffect(Number);
            device_.playEffect(Number);
            break;
        case SfxBlowUp:
            device_.playEffect(Number);
            break;
        default:
            break;
    }
}

void DXmusicSFX::StopFallSound() {
    if (SoundReady) device_.stopEffect(SfxFall);
}

void DXmusicSFX::PlayMusic(int16_t Piece) {
    if (!SoundReady || MusicMuted) return;
    StopMusic();
    if (Piece >= MusicTrack && Piece <= MusicWin) device_.playMusic(Piece, Piece != MusicWin);
    CurrentMusic = Piece;
}

void DXmusicSFX::StopMusic() {
    if (!SoundReady) return;
    for (int piece = MusicTrack; piece <= MusicWin; ++piece) device_.stopMusic(piece);
}

// Neither checks SoundReady: the device ignores calls on pieces it never opened.
void DXmusicSFX::PauseMusic() {
    if (CurrentMusic >= MusicTrack && CurrentMusic <= MusicWin) device_.pauseMusic();
}

void DXmusicSFX::ResumeMusic() {
    if (CurrentMusic >= MusicTrack && CurrentMusic <= MusicWin)
        device_.playMusic(CurrentMusic, CurrentMusic != MusicWin);
}

// Both volumes are kept within their range, in play and in options.dat: a
// press past either end changes nothing, and a stored value from outside the
// range (an old or edited file) is read as the nearest end, so the options
// screen always shows what plays.
void DXmusicSFX::SetSfxVolume(int32_t Volume) {
    Volume = std::clamp(Volume, SfxVolumeMin, SfxVolumeMax);
    if (SoundReady) {
        const float gain = SfxGain(Volume);
        for (int number : kVolumeEffects) device_.setEffectGain(number, gain);
    }
    SfxVolume = Volume;
    SfxMuted = Volume <= SfxVolumeMin;
    options_.Options.SfxVolume = Volume;
    options_.SaveOptions();
}

void DXmusicSFX::SetMusicVolume(int32_t Volume) {
    Volume = std::clamp(Volume, 0, MusicVolumeMax);
    if (SoundReady) device_.setMusicGain(static_cast<float>(Volume) / 100.0f);
    MusicVolume = Volume;
    MusicMuted = Volume <= 0;
    options_.Options.MusicVolume = Volume;
    options_.SaveOptions();
}

}  // namespace qb
