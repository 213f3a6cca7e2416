// quorbit-shot: renders one track as the track choice shows it (the raised
// camera looking down the track, the zone's sky behind) with the real OpenGL
// device into a hidden window, and writes the picture as a PNG. With --bench
// it instead draws a 200-piece track repeatedly and prints frames a second.
// With --overview it draws the whole track from one camera shared by every
// track of the file (see TrackOverview), for putting tracks side by side.
//
//   quorbit-shot --game-dir DIR --track N --out FILE.png [--mode 1|2] [--overview]
//   quorbit-shot --game-dir DIR --bench [--frames N] [--mode 1|2] [--out FILE.png]
//   --eye X,Y,Z --at X,Y,Z  look from elsewhere (close-ups of the pieces)
#include <epoxy/gl.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "level/LevelRecords.h"
#include "level/LevelStructure.h"
#include "level/TrackObjects.h"
#include "level/TrackOverview.h"
#include "platform/D3DMath.h"
#include "platform/DirectX.h"
#include "platform/sdl/SdlPlatform.h"
#include "shell/frmGame.h"
#include "world/AnimatedTextures.h"
#include "world/clsBackground.h"

namespace {

using namespace qb;

struct Args {
    std::string gameDir, out;
    int track = 0, mode = 2, frames = 500;
    bool bench = false, overview = false;
    Vector3 eye{0, 35, -63}, at{0, 18, 0};
};

bool ParseVector(const char* text, Vector3& v) {
    return std::sscanf(text, "%f,%f,%f", &v.x, &v.y, &v.z) == 3;
}

int Usage() {
    std::fprintf(stderr,
                 "usage: quorbit-shot --game-dir DIR --track N --out FILE.png [--mode 1|2] [--overview]\n"
                 "       quorbit-shot --game-dir DIR --bench [--frames N] [--mode 1|2] [--out FILE.png]\n"
                 "       either with --eye X,Y,Z --at X,Y,Z to look from elsewhere\n");
    return 2;
}

bool Parse(int argc, char** argv, Args& a) {
    for (int i = 1; i < argc; ++i) {
        const std::string k = argv[i];
        auto value = [&]() -> const char* { return i + 1 < argc ? argv[++i] : nullptr; };
        const char* v = nullptr;
        if (k == "--bench") {
            a.bench = true;
            continue;
        }
        if (k == "--overview") {
            a.overview = true;
            continue;
        }
        if (!(v = value())) return false;
        if (k == "--game-dir")
            a.gameDir = v;
        else if (k == "--track")
            a.track = std::atoi(v);
        else if (k == "--out")
            a.out = v;
        else if (k == "--mode")
            a.mode = std::atoi(v);
        else if (k == "--frames")
            a.frames = std::atoi(v);
        else if (k == "--eye") {
            if (!ParseVector(v, a.eye)) return false;
        } else if (k == "--at") {
            if (!ParseVector(v, a.at)) return false;
        } else
            return false;
    }
    if (a.gameDir.empty() || (a.mode != 1 && a.mode != 2)) return false;
    if (a.gameDir.back() != '/') a.gameDir += '/';
    if (a.bench && a.overview) return false;
    return a.bench ? a.frames > 0 : (a.track > 0 && !a.out.empty());  // --out is optional with --bench
}

// The sky the track choice shows for each zone (tracks 1-10 are zone 1).
std::string ZoneSky(int track) {
    static const char* const skies[6] = {"_default.jpg", "bk001.jpg", "bk003.jpg",
                                         "bk006.jpg",    "bk004.jpg", "bk005.jpg"};
    const int zone = (track - 1) / 10;
    return skies[zone >= 0 && zone < 6 ? zone : 0];
}

// 200 pieces: a long road of 150 blocks of every kind, 20 ramps, 10 moving
// platforms and 20 stars, all inside the drawn stretch of the menus' view.
LevelRecord BenchTrack() {
    LevelRecord r;
    r.TextureNames = {"",         "wall.bmp",    "road.bmp",  "finish.bmp", "bounce.bmp",
                      "ice.bmp",  "falling.bmp", "turbo.bmp", "deadly.bmp", "AnimationTest_0.bmp",
                      "ramp.bmp", "platform.bmp"};
    r.Settings.Gravity = 0.025f;
    for (int i = 0; i < 150; ++i) {
        BlockRecord b;
        b.X = static_cast<float>((i % 3) * 5 - 7);
        b.Z = static_cast<float>((i / 3) * 3);
        b.scaleX = 4;
        b.scaleY = 1;
        b.scalez = 3;
        b.TextureA = b.TextureB = b.TextureC = 1;
        b.TextureD = static_cast<int16_t>(2 + i % 8);
        b.ScaleTextureSide = b.ScaleTextureTop = 0;
        r.Blocks.push_back(b);
    }
    for (int i = 0; i < 20; ++i)
        r.Ramps.push_back(RampRecord{static_cast<float>((i % 2) * 10 - 6), 1, static_cast<float>(i * 7), 3, 1,
                                     3, 10, 1, static_cast<uint8_t>(i % 4)});
    for (int i = 0; i < 10; ++i) {
        MovingPlatformRecord m;
        m.X = -2;
        m.Y = 4;
        m.Z = static_cast<float>(i * 15);
        m.scaleX = 3;
        m.scalez = 3;
        m.TextureA = m.TextureB = m.TextureC = 1;
        m.TextureD = 11;
        m.Mdir = 3;
        m.Mspeed = 5;
        m.Mdist = 4;
        m.MloopBack = 1;
        r.Platforms.push_back(m);
    }
    for (int i = 0; i < 20; ++i)
        r.Stars.push_back(StarRecord{static_cast<float>(i % 3 * 5 - 5), 3, static_cast<float>(i * 7 + 2)});
    r.BlockUpper = 149;
    r.RampUpper = 19;
    r.PlatformUpper = 9;
    r.StarUpper = 19;
    return r;
}

void DrawScene(frmGame& game) {
    GraphicsDevice& device = game.platform.graphics;
    device.clear(0xFF000000u, 1.0f);
    device.beginScene();
    game.DrawWorld(true);
    device.endScene();
    device.present();
}

// The whole track, row by row, on a plain ground that dark and light
// textures both stand out from.
void DrawOverview(frmGame& game, int track) {
    std::vector<TrackBox> boxes;
    for (int32_t n = 1; n <= game.levels->LevelCount(); ++n)
        boxes.push_back(TrackBounds(game.levels->Level(n)));
    const PresentParams& picture = game.dx->Present;
    const TrackOverview overview(boxes, static_cast<float>(picture.width),
                                 static_cast<float>(picture.height));
    const TrackBox& box = boxes[static_cast<size_t>(track - 1)];
    GraphicsDevice& device = game.platform.graphics;
    device.clear(0xFF5A6470u, 1.0f);
    device.beginScene();
    device.setTransform(TransformKind::View, Matrix4{});
    TrackObjects& t = *game.track;
    for (int row = 0; row < overview.RowsUsed(box); ++row) {
        device.setTransform(TransformKind::Projection, overview.RowProjection(box, row));
        for (int32_t i = 0; i <= t.BlockUpper; ++i) t.blocks[i]->draw(1.0f);
        for (int32_t i = 0; i <= t.RampUpper; ++i) t.ramps[i]->draw();
        for (int32_t i = 0; i <= t.PlatformUpper; ++i) t.platforms[i]->draw(1.0f);
        for (int32_t i = 0; i <= t.StarUpper; ++i) t.stars[i]->draw(1.0f);
    }
    // Stars are too small to see from this far: a gold diamond on top marks each.
    device.setRenderState(RenderState::ZEnable, 0);
    device.setTexture(0);
    for (const StarRecord& s : game.levels->Level(track).Stars) {
        const Vector3 centre{s.X, s.Y, s.Z};
        for (int row = 0; row < overview.RowsUsed(box); ++row) {
            const Vector3 p = TransformCoord(centre, overview.RowProjection(box, row));
            if (p.x < -1 || p.x > 1) continue;
            const float x = (p.x + 1) / 2 * game.dx->ScreenWidth, y = (1 - p.y) / 2 * game.dx->ScreenHeight;
            for (const auto& [size, colour] : {std::pair{8.0f, 0xFF201000u}, std::pair{6.0f, 0xFFFFC828u}}) {
                const ScreenVertex diamond[4] = {{x, y - size, 0, 1, colour},
                                                 {x + size, y, 0, 1, colour},
                                                 {x - size, y, 0, 1, colour},
                                                 {x, y + size, 0, 1, colour}};
                device.drawScreenVertices(Primitive::TriangleStrip, diamond, 2);
            }
        }
    }
    device.setRenderState(RenderState::ZEnable, 1);
    device.endScene();
    device.present();
}

}  // namespace

int main(int argc, char** argv) {
    Args args;
    if (!Parse(argc, argv, args)) return Usage();
    // What the game would write goes to a scratch folder, never the game folder.
    const std::filesystem::path scratch =
        std::filesystem::temp_directory_path() / ("quorbit-shot-" + std::to_string(::getpid()));
    std::filesystem::create_directories(scratch);
    std::error_code ec;
    std::filesystem::copy_file(args.gameDir + "levels.dat", scratch / "levels.dat", ec);

    SdlPlatform sdl(argv[0], true);
    sdl.platform.paths.gameDir = args.gameDir;
    sdl.platform.paths.writeDir = scratch.string() + "/";
    int rc = 0;
    {
        frmGame game(sdl.platform);
        game.dx->VideoMode = args.mode;
        sdl.platform.window.show();  // the hidden window holds the GL context
        if (!game.dx->InitialiseGraphics()) {
            std::fprintf(stderr, "quorbit-shot: no usable OpenGL device\n");
            rc = 1;
        } else {
            game.TexturesPath = args.gameDir + "textures/";
            game.BackgroundsPath = args.gameDir + "backgrounds/";
            game.animated->InitAnimatedTextures();
            game.GameState = TrackChoice;
            // The track choice's raised camera: base camera moved back 45 and up 10.
            game.dx->CameraEye = args.eye;
            game.dx->CameraLookAt = args.at;
            game.dx->SetView();
            if (args.bench) {
                const LevelRecord bench = BenchTrack();
                const auto built = std::chrono::steady_clock::now();
                for (int i = 0; i < 10; ++i) game.track->BuildLevel(bench, false);  // as after ten crashes
                std::printf(
                    "quorbit-shot: building the 200-piece track: %.2f ms\n",
                    std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - built)
                            .count() /
                        10);
                game.background->create(game.BackgroundsPath + "_default.jpg");
                for (int i = 0; i < 20; ++i) DrawScene(game);  // warm the caches
                glFinish();
                const auto start = std::chrono::steady_clock::now();
                for (int i = 0; i < args.frames; ++i) {
                    DrawScene(game);
                    glFinish();
                }
                const double s =
                    std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
                std::printf("quorbit-shot: %d frames of a 200-piece track at %dx%d: %.1f frames a second\n",
                            args.frames, static_cast<int>(game.dx->ScreenWidth),
                            static_cast<int>(game.dx->ScreenHeight), args.frames / s);
                if (!args.out.empty() && !sdl.saveScreenshot(args.out)) rc = 1;
            } else {
                std::string error;
                if (!game.levels->LoadLevels(error) || !game.levels->HasLevel(args.track)) {
                    std::fprintf(stderr, "quorbit-shot: no track %d: %s\n", args.track, error.c_str());
                    rc = 1;
                } else {
                    game.levels->CurrentLevel = args.track;
                    game.track->BuildLevel(args.track, false);
                    if (args.overview) {
                        DrawOverview(game, args.track);
                    } else {
                        game.background->create(game.BackgroundsPath + ZoneSky(args.track));
                        DrawScene(game);
                    }
                    if (!sdl.saveScreenshot(args.out)) {
                        std::fprintf(stderr, "quorbit-shot: cannot write %s\n", args.out.c_str());
                        rc = 1;
                    }
                }
            }
        }
    }
    std::filesystem::remove_all(scratch, ec);
    return rc;
}
