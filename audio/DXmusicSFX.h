// Sound effects and music. Eight one-shot effects (numbers 1 and 3 to 9), seven
// music pieces (1 to 6 loop on the tracks of their zone, 7 plays once when a
// track is won) and
// the two volume settings, which are saved to options.dat on every change.
// Everything is guarded by SoundReady: when start-up of sound fails, every
// effect and music call does nothing and the game runs silent.
#pragma once

#include <cstdint>
#include <string>

namespace qb {

class AudioDevice;
class optionsDat;
class QuorbitDebug;

// Effect numbers callers pass to PlayEffect. Number 2 has no sound.
enum SoundEffect : int16_t {
    SfxJump = 1,           // sfx/Jump.wav: the vehicle jumps; the sample on the options screen
    SfxFall = 3,           // sfx/fall.wav: dropping below the track, a falling block giving way
    SfxGetStar = 4,        // sfx/getstar.wav: a star is collected
    SfxBlowUp = 5,         // sfx/blowup.wav: the vehicle starts to blow up
    SfxBouncePad = 6,      // sfx/bouncepad.wav: the vehicle hits a bounce pad
    SfxTurboPlatform = 7,  // sfx/turboplatform.wav: the vehicle hits a turbo platform
    SfxRollover = 8,       // sfx/rollover.wav: a button's roll-over image first shows
    SfxTransit = 9,        // sfx/transit.wav: every screen change
};

// Music pieces callers pass to PlayMusic. Pieces 1 to 6 are the zones' own
// (music/track01.ogg .. track06.ogg), each looping on its zone's tracks.
enum MusicPiece : int16_t {
    MusicTrack = 1,     // music/track01.ogg, zone 1
    MusicLastZone = 6,  // music/track06.ogg, zone 6
    MusicWin = 7,       // music/winlevel.ogg, once, when a track is won
};

class DXmusicSFX {
public:
    static constexpr int32_t SfxVolumeMin = -2000;  // silent (hundredths of a decibel)
    static constexpr int32_t SfxVolumeMax = 0;      // full
    static constexpr int32_t MusicVolumeMax = 100;

    // gameDir ends with '/': effects come from gameDir + "sfx/", music from gameDir + "music/".
    DXmusicSFX(AudioDevice& device, optionsDat& options, QuorbitDebug& debug, std::string gameDir);
    ~DXmusicSFX();
    DXmusicSFX(const DXmusicSFX&) = delete;
    DXmusicSFX& operator=(const DXmusicSFX&) = delete;

    // Opens the sound output, loads every effect and both music pieces, then
    // applies (and saves) the two volumes of the options record. False when
    // there is no sound device or an effect cannot be loaded; a missing music
    // piece only silences that piece.
    bool InitSound();

    // Plays one effect: 1, 4, 6, 7, 8, 9 restart from the beginning even while
    // sounding; 3 rewinds and plays; 5 never restarts while still sounding.
    // Other numbers, a muted effect volume or no sound: nothing.
    void PlayEffect(int16_t Number);
    // Stops effect 3 (a track reset).
    void StopFallSound();

    // Stops every piece, then starts piece 1..7 from its beginning. Remembers
    // the piece as CurrentMusic even when it is none of them.
    void PlayMusic(int16_t Piece);
    // The piece of a zone (1..6); anything else gets zone 1's.
    static int16_t ZoneMusic(int32_t zone);
    // Stops every piece and rewinds it.
    void StopMusic();
    // Pause or resume the piece last started (no focus; device reset).
    void PauseMusic();
    void ResumeMusic();

    // Effect volume -2000..0 in hundredths of a decibel; music volume 0..100.
    // In range the volume takes effect; any value sets the mute flag and goes
    // into the options record unchanged, and options.dat is written.
    void SetSfxVolume(int32_t Volume);
    void SetMusicVolume(int32_t Volume);

    // The linear gain of an effect volume: 10^(v / 2000).
    static float SfxGain(int32_t hundredthsOfDecibel);
    // The file of an effect or a music piece below the game folder, "" for none.
    static const char* EffectFile(int number);
    static const char* MusicFile(int piece);

    // Module state, read by the options screen and the tests.
    bool SoundReady = false;
    bool SfxMuted = false;
    bool MusicMuted = false;
    int32_t SfxVolume = 0;
    int32_t MusicVolume = 0;
    int16_t CurrentMusic = 0;

private:
    AudioDevice& device_;
    optionsDat& options_;
    QuorbitDebug& debug_;
    std::string gameDir_;
    bool opened_ = false;
};

}  // namespace qb
