// The car's shadow: a soft picture over the car's 0.8 x 0.8 footprint, laid
// in four quarter pieces. Each corner looks straight down for the block,
// platform or ramp under it; its piece starts at the corner, stops at the
// edge of that object and lies at its height (tilted along a ramp), so the
// shadow breaks at edges and steps and is missing over gaps.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "platform/GraphicsDevice.h"
#include "platform/Types.h"

namespace qb {

struct Platform;
class QuorbitDebug;
class TrackObjects;
class clsPlayer;

struct ShadowQuarter {
    float distance = 0;  // probe to surface
    int32_t index = 0;   // object in its list
    uint8_t kind = 0;    // 1 block, 2 moving platform, 3 ramp; 0 none
    uint8_t quarter = 0;
    float length = 0;    // l, along z
    float width = 0;     // w, along x
    float textureX = 0;  // w / 0.8
    float textureZ = 0;  // l / 0.8
};

class clsShadow {
public:
    static constexpr int VertexCount = 24;
    static constexpr float Footprint = 0.8f;

    // Lays the shadow of `car` on `track`.
    clsShadow(Platform& platform, QuorbitDebug& debug, const TrackObjects& track, const clsPlayer& car);
    ~clsShadow();
    clsShadow(const clsShadow&) = delete;
    clsShadow& operator=(const clsShadow&) = delete;

    void create();
    // Draws the pieces as they are, without searching.
    void draw2();
    // Finds where the four pieces lie under the car as it is now.
    void Place();
    // Draws the pieces as placed, moved by `offset` (a drawing between two
    // play frames shows the car short of where it is).
    void draw(const Vector3& offset = Vector3{});

    // The last draw's work, for the tests.
    const std::array<ShadowQuarter, 4>& Quarters() const { return quarters_; }
    const std::array<Vector3, 4>& DropPoints() const { return drops_; }
    const std::array<Vector3, 4>& Origins() const { return origins_; }
    const std::array<BlockVertex, VertexCount>& Vertices() const { return vertices_; }
    TextureId Texture() const { return texture_; }

private:
    Vector3 FindDropPoint(const Vector3& probe, ShadowQuarter& record, uint8_t quarter);
    void setBlending();

    Platform& platform_;
    QuorbitDebug& debug_;
    const TrackObjects& track_;
    const clsPlayer& car_;
    std::array<BlockVertex, VertexCount> vertices_{};
    std::array<ShadowQuarter, 4> quarters_{};
    std::array<Vector3, 4> drops_{};
    std::array<Vector3, 4> origins_{};
    BufferId buffer_ = 0;
    TextureId texture_ = 0;
    std::vector<int32_t> nearBlocks_;
};

}  // namespace qb
