#include "level/TrackObjects.h"

#include <cmath>
#include <filesystem>

#include "level/LevelRecords.h"
#include "platform/WholeNumbers.h"
#include "shell/frmGame.h"
#include "world/AnimatedTextures.h"
#include "world/clsBackground.h"

namespace qb {

namespace {
const char* const kFaces[4] = {"A", "B", "C", "D"};

// An upper index never reaches past the items the record really holds.
template <typename T>
int32_t Upper(int32_t upper, const std::vector<T>& items) {
    const int32_t last = static_cast<int32_t>(items.size()) - 1;
    return upper < last ? upper : last;
}
}  // namespace

TrackObjects::TrackObjects(frmGame& game) : resources_(game.platform.graphics), game_(game) {}

TrackObjects::~TrackObjects() {
    // The objects go before the textures and meshes they show.
    blocks.clear();
    ramps.clear();
    platforms.clear();
    stars.clear();
}

void TrackObjects::refreshTextureFolder() {
    // The folder's own entry names: a face texture is used only when a file
    // of exactly that name (letter case included) is there.
    textureFiles_.clear();
    std::error_code ec;
    for (std::filesystem::directory_iterator it(game_.TexturesPath, ec), end; !ec && it != end;
         it.increment(ec))
        textureFiles_.insert(it->path().filename().string());
}

std::string TrackObjects::ChooseTexture(const LevelRecord& record, int k) const {
    if (k >= 1 && k < static_cast<int>(record.TextureNames.size())) {
        const std::string& name = record.TextureNames[k];
        if (LevelRecord::IsPlainFileName(name) && textureFiles_.count(name) != 0) return name;
    }
    return "_default.bmp";
}

void TrackObjects::BuildLevel(const LevelRecord& record, bool loadBackground) {
    resources_.device.setTexture(0);
    resources_.beginTrack();
    resources_.animated = game_.animated.get();
    resources_.TexturesPath = game_.TexturesPath;
    resources_.SkinsPath = game_.platform.paths.gameDir + "skins/";
    refreshTextureFolder();
    const std::string& dir = game_.TexturesPath;

    // Names resolved once per track, not once per face.
    std::vector<std::string> chosen(record.TextureNames.size() + 1);
    for (size_t k = 0; k < chosen.size(); ++k) chosen[k] = ChooseTexture(record, static_cast<int>(k));
    auto texture = [&](int k) -> const std::string& {
        return k >= 0 && k < static_cast<int>(chosen.size()) ? chosen[k] : chosen[0];
    };

    // A list the new track replaces goes before the new one is made: a track
    // rebuilt at every restart never holds two tracks' objects at once.
    const int32_t B = Upper(record.BlockUpper, record.Blocks);
    blocks.clear();
    std::vector<std::unique_ptr<clsBlock>> newBlocks(B + 1 > 0 ? B + 1 : 0);
    for (int32_t i = 0; i <= B; ++i) {
        const BlockRecord& b = record.Blocks[i];
        auto block = std::make_unique<clsBlock>(resources_);
        block->create(b.X, b.Y, b.Z, b.scaleX, b.scaleY, b.scalez);
        block->ScaleTextureSide(b.ScaleTextureSide);
        block->ScaleTextureTop(b.ScaleTextureTop);
        block->scaleX(b.scaleX);
        block->scaleY(b.scaleY);
        block->scalez(b.scalez);
        const int16_t tex[4] = {b.TextureA, b.TextureB, b.TextureC, b.TextureD};
        for (int f = 0; f < 4; ++f) block->Texture(texture(tex[f]), kFaces[f], dir);
        block->changeactioncode(b.ActionCode);
        block->ShowSymbolLarge();
        newBlocks[i] = std::move(block);
    }
    blocks = std::move(newBlocks);

    const int32_t R = Upper(record.RampUpper, record.Ramps);
    if (R >= 0) {
        ramps.clear();
        std::vector<std::unique_ptr<clsRamp>> list(R + 1);
        for (int32_t i = 0; i <= R; ++i) {
            const RampRecord& r = record.Ramps[i];
            auto ramp = std::make_unique<clsRamp>(resources_);
            ramp->create(0, 0, 0);
            ramp->Xpos(WholeCoordinate(r.X));
            ramp->Ypos(WholeCoordinate(r.Y));
            ramp->Zpos(WholeCoordinate(r.Z));
            for (int turn = 0; turn < r.Rotation; ++turn) ramp->rotate();
            ramp->scaleX(Whole16(r.scaleX));
            ramp->scaleY(Whole16(r.scaleY));
            ramp->scalez(Whole16(r.scalez));
            ramp->Texture(texture(r.TextureA), "A", dir);
            ramp->Texture(texture(r.TextureB), "B", dir);
            list[i] = std::move(ramp);
        }
        ramps = std::move(list);
    }

    const int32_t P = Upper(record.PlatformUpper, record.Platforms);
    if (P >= 0) {
        platforms.clear();
        std::vector<std::unique_ptr<clsMovingPlatform>> list(P + 1);
        for (int32_t i = 0; i <= P; ++i) {
            const MovingPlatformRecord& m = record.Platforms[i];
            auto platform = std::make_unique<clsMovingPlatform>(resources_);
            platform->create(0, 0, 0);
            platform->Xpos(m.X);
            platform->Ypos(m.Y);
            platform->Zpos(m.Z);
            platform->scaleX(m.scaleX);
            platform->scaleY(m.scaleY);
            platform->scalez(m.scalez);
            platform->changeactioncode(m.ActionCode);
            platform->Mdir(m.Mdir);
            platform->Mspeed(m.Mspeed);
            platform->Mdist(m.Mdist);
            platform->MloopBack(m.MloopBack != 0);
            platform->ScaleTextureSide(m.ScaleTextureSide);
            platform->ScaleTextureTop(m.ScaleTextureTop);
            const int16_t tex[4] = {m.TextureA, m.TextureB, m.TextureC, m.TextureD};
            for (int f = 0; f < 4; ++f) platform->Texture(texture(tex[f]), kFaces[f], dir);
            platform->ShowSymbolLarge();
            list[i] = std::move(platform);
        }
        platforms = std::move(list);
    }

    const int32_t S = Upper(record.StarUpper, record.Stars);
    if (S >= 0) {
        stars.clear();
        const std::string model = game_.platform.paths.gameDir + "models/orb.x";
        std::vector<std::unique_ptr<clsStar>> list(S + 1);
        for (int32_t i = 0; i <= S; ++i) {
            const StarRecord& s = record.Stars[i];
            auto star = std::make_unique<clsStar>(resources_);
            star->load(model);
            star->Xpos(WholeCoordinate(s.X));
            star->Ypos(WholeCoordinate(s.Y));
            star->Zpos(WholeCoordinate(s.Z));
            list[i] = std::move(star);
        }
        stars = std::move(list);
    }

    // Textures only the last track showed go; the frames its animated faces
    // move on to are asked for again as they come.
    resources_.releaseUnused();

    BlockUpper = B;
    RampUpper = R;
    PlatformUpper = P;
    StarUpper = S;
    Gravity = record.Settings.Gravity;
    BuiltLevel = 0;

    if (loadBackground) game_.background->create(game_.BackgroundsPath + record.BackgroundFile());
    game_.ResetFPSCounter();
}

}  // namespace qb
