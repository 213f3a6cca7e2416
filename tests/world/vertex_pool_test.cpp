// Track objects keep their vertices in slots of a few shared buffers: a big
// track must not cost a buffer object per block.
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include "tests/world/WorldTest.h"
#include "world/clsBlock.h"
#include "world/clsMovingPlatform.h"
#include "world/clsRamp.h"

namespace qb {
namespace {

using test::WorldRig;

bool SameVertex(const BlockVertex& a, const BlockVertex& b) {
    return a.x == b.x && a.y == b.y && a.z == b.z && a.diffuse == b.diffuse && a.u == b.u && a.v == b.v;
}

// The vertices an object's slot holds in the recorded buffers.
bool SlotHolds(HeadlessGraphics& g, VertexSlot slot, const BlockVertex* v, int count) {
    const std::vector<BlockVertex>& b = g.buffers.at(slot.buffer);
    for (int i = 0; i < count; ++i)
        if (!SameVertex(b.at(static_cast<size_t>(slot.start + i)), v[i])) return false;
    return true;
}

struct BigTrack {
    std::vector<std::unique_ptr<clsBlock>> blocks;
    std::vector<std::unique_ptr<clsRamp>> ramps;
    std::vector<std::unique_ptr<clsMovingPlatform>> platforms;
    BigTrack(WorldResources& res, int n) {
        for (int i = 0; i < n; ++i) {
            blocks.push_back(std::make_unique<clsBlock>(res));
            blocks.back()->create(0, 0, static_cast<float>(i), 2, 1, 3);
            blocks.back()->scaleX(2);
        }
        for (int i = 0; i < n / 4; ++i) {
            ramps.push_back(std::make_unique<clsRamp>(res));
            ramps.back()->create(0, 0, 0);
            ramps.back()->scalez(static_cast<int16_t>(i % 7 + 1));
            platforms.push_back(std::make_unique<clsMovingPlatform>(res));
            platforms.back()->create(0, 0, static_cast<float>(i));
            platforms.back()->scaleY(static_cast<float>(i % 5 + 1));
        }
    }
};

TEST(VertexPool, ThousandsOfObjectsShareAHandfulOfBuffersEachInItsOwnSlot) {
    WorldRig rig("pool-share");
    BigTrack t(rig.res, 2000);  // 3 000 objects
    EXPECT_EQ(rig.device.buffers.size(), 3u);
    EXPECT_EQ(rig.res.vertices.slotsInUse(), 3000);
    std::set<std::pair<BufferId, int>> seen;
    for (auto& b : t.blocks) {
        EXPECT_TRUE(seen.insert({b->vertexSlot().buffer, b->vertexSlot().start}).second);
        ASSERT_TRUE(SlotHolds(rig.device, b->vertexSlot(), b->vertices(), clsBlock::VertexCount));
    }
    for (auto& r : t.ramps) {
        EXPECT_TRUE(seen.insert({r->vertexSlot().buffer, r->vertexSlot().start}).second);
        ASSERT_TRUE(SlotHolds(rig.device, r->vertexSlot(), r->vertices(), clsRamp::VertexCount));
    }
    for (auto& p : t.platforms) {
        EXPECT_TRUE(seen.insert({p->vertexSlot().buffer, p->vertexSlot().start}).second);
        ASSERT_TRUE(SlotHolds(rig.device, p->vertexSlot(), p->vertices(), 24));
    }

    // Each draws from its own slot.
    clsBlock& last = *t.blocks.back();
    last.draw();
    EXPECT_EQ(rig.device.lastBufferDraw.buffer, last.vertexSlot().buffer);
    EXPECT_EQ(rig.device.lastBufferDraw.startVertex, last.vertexSlot().start);
    EXPECT_EQ(rig.device.lastBufferDraw.primitives, 8);
    clsRamp& ramp = *t.ramps.back();
    ramp.Texture("road.bmp", "A", rig.res.TexturesPath);
    ramp.Texture("wall.bmp", "B", rig.res.TexturesPath);
    ramp.draw();
    EXPECT_EQ(rig.device.lastBufferDraw.startVertex, ramp.vertexSlot().start + 6);
    EXPECT_EQ(rig.device.lastBufferDraw.primitives, 4);
}

TEST(VertexPool, ARetiledOrTurnedObjectRewritesItsOwnSlotOnly) {
    WorldRig rig("pool-retile");
    BigTrack t(rig.res, 400);
    const auto before = rig.device.buffers;
    const int updated = rig.device.verticesUpdated;
    clsBlock& b = *t.blocks[123];
    b.scaleX(7);
    clsRamp& r = *t.ramps[45];
    r.rotate();
    EXPECT_EQ(rig.device.verticesUpdated - updated, clsBlock::VertexCount + clsRamp::VertexCount);
    EXPECT_TRUE(SlotHolds(rig.device, b.vertexSlot(), b.vertices(), clsBlock::VertexCount));
    EXPECT_TRUE(SlotHolds(rig.device, r.vertexSlot(), r.vertices(), clsRamp::VertexCount));
    // Every other vertex is as it was.
    for (const auto& [id, vs] : rig.device.buffers)
        for (size_t i = 0; i < vs.size(); ++i) {
            const int at = static_cast<int>(i);
            const bool inB = id == b.vertexSlot().buffer && at >= b.vertexSlot().start &&
                             at < b.vertexSlot().start + VertexPool::SlotVertices;
            const bool inR = id == r.vertexSlot().buffer && at >= r.vertexSlot().start &&
                             at < r.vertexSlot().start + VertexPool::SlotVertices;
            if (!inB && !inR) {
                ASSERT_TRUE(SameVertex(vs[i], before.at(id)[i])) << id << " " << i;
            }
        }
}

TEST(VertexPool, SlotsGoBackWhenObjectsGoAndTheBuffersWithThePool) {
    WorldRig rig("pool-reuse");
    {
        BigTrack t(rig.res, 2000);
        EXPECT_EQ(rig.device.buffers.size(), 3u);
    }
    EXPECT_EQ(rig.res.vertices.slotsInUse(), 0);
    // A rebuilt track takes the freed slots, not new buffers.
    for (int i = 0; i < 3; ++i) BigTrack again(rig.res, 2000);
    EXPECT_EQ(rig.device.buffers.size(), 3u);

    HeadlessGraphics device;
    {
        VertexPool pool(device);
        pool.take();
        pool.give(pool.take());
        EXPECT_EQ(device.buffers.size(), 1u);
        EXPECT_EQ(pool.slotsInUse(), 1);
    }
    EXPECT_TRUE(device.buffers.empty());
}

}  // namespace
}  // namespace qb
