// The live objects of the current track: blocks, ramps, moving platforms and
// stars, rebuilt from the track record by BuildLevel.
//
// Every user of the lists iterates from 0 to the upper index of the track
// built last (BlockUpper ...), never to a list's size: a list whose kind the
// track lacks (upper index -1) keeps the objects of an earlier track, unseen.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "world/WorldFrame.h"
#include "world/WorldResources.h"
#include "world/clsBlock.h"
#include "world/clsMovingPlatform.h"
#include "world/clsRamp.h"
#include "world/clsStar.h"

namespace qb {

class frmGame;
struct LevelRecord;

class TrackObjects {
    // First member: the objects below release their buffers through it.
    WorldResources resources_;

public:
    explicit TrackObjects(frmGame& game);
    ~TrackObjects();
    TrackObjects(const TrackObjects&) = delete;
    TrackObjects& operator=(const TrackObjects&) = delete;

    // Builds track `level` (1-based) of the loaded track file. With
    // loadBackground the track's own sky is loaded too.
    void BuildLevel(int32_t level, bool loadBackground);
    // The same from a record in hand (user tracks, tests, tools).
    void BuildLevel(const LevelRecord& record, bool loadBackground);

    // The face texture for texture index k of the record: TextureNames(k)
    // when a file of exactly that name is in the textures folder, else
    // "_default.bmp".
    std::string ChooseTexture(const LevelRecord& record, int k) const;

    // What the world objects need to know about this frame.
    WorldFrame Frame(bool playing) const { return WorldFrame{playing, Gravity}; }

    std::vector<std::unique_ptr<clsBlock>> blocks;
    std::vector<std::unique_ptr<clsRamp>> ramps;
    std::vector<std::unique_ptr<clsMovingPlatform>> platforms;
    std::vector<std::unique_ptr<clsStar>> stars;

    // Upper indexes and gravity of the track built last (-1: none of that kind).
    int32_t BlockUpper = -1;
    int32_t RampUpper = -1;
    int32_t PlatformUpper = -1;
    int32_t StarUpper = -1;
    float Gravity = 0;
    int32_t BuiltLevel = 0;  // 1-based index of the track built last, 0 for none

    WorldResources& resources() { return resources_; }

private:
    void refreshTextureFolder();

    frmGame& game_;
    std::unordered_set<std::string> textureFiles_;
};

}  // namespace qb
