// The vertex buffers a track's boxes and ramps live in. A GL driver spends a
// fixed amount of memory on every buffer object whatever its size (tens of
// kilobytes on a software rasteriser), so a track of tens of thousands of
// objects with a buffer each would cost gigabytes. Instead every object
// takes a slot of a few large buffers and rewrites only its own slot.
#pragma once

#include <vector>

#include "platform/GraphicsDevice.h"

namespace qb {

// Where an object's vertices are: the buffer and the first vertex in it.
struct VertexSlot {
    BufferId buffer = 0;
    int start = 0;
};

class VertexPool {
public:
    // Vertices in one slot: a box's four faces.
    static constexpr int SlotVertices = 24;
    // Slots in one buffer: a shipped track fits in the first.
    static constexpr int SlotsPerBuffer = 1024;

    explicit VertexPool(GraphicsDevice& device) : device_(device) {}
    ~VertexPool();
    VertexPool(const VertexPool&) = delete;
    VertexPool& operator=(const VertexPool&) = delete;

    // A free slot, holding whatever it held before. Buffer 0 when the
    // device could make no buffer (asked again next time).
    VertexSlot take();
    // The slot is free for the next object; a slot of buffer 0 is ignored.
    void give(VertexSlot slot);
    // Writes `count` (at most SlotVertices) vertices at the start of the slot.
    void write(VertexSlot slot, const BlockVertex* vertices, int count);

    int buffers() const { return static_cast<int>(buffers_.size()); }
    int slotsInUse() const {
        return static_cast<int>(buffers_.size()) * SlotsPerBuffer - static_cast<int>(free_.size());
    }

private:
    GraphicsDevice& device_;
    std::vector<BufferId> buffers_;
    std::vector<VertexSlot> free_;  // taken from the back: the lowest slot first
};

}  // namespace qb
