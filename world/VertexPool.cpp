#include "world/VertexPool.h"

#include <algorithm>

namespace qb {

VertexPool::~VertexPool() {
    for (BufferId b : buffers_) device_.releaseVertexBuffer(b);
}

VertexSlot VertexPool::take() {
    if (free_.empty()) {
        const std::vector<BlockVertex> blank(static_cast<size_t>(SlotsPerBuffer * SlotVertices));
        const BufferId b = device_.createVertexBuffer(blank.data(), static_cast<int>(blank.size()));
        if (b == 0) return VertexSlot{};
        buffers_.push_back(b);
        // Handed out front to back, so a track's objects lie in drawing order.
        for (int s = SlotsPerBuffer - 1; s >= 0; --s) free_.push_back(VertexSlot{b, s * SlotVertices});
    }
    const VertexSlot slot = free_.back();
    free_.pop_back();
    return slot;
}

void VertexPool::give(VertexSlot slot) {
    if (slot.buffer != 0) free_.push_back(slot);
}

void VertexPool::write(VertexSlot slot, const BlockVertex* vertices, int count) {
    if (slot.buffer == 0) return;
    device_.updateVertexBuffer(slot.buffer, slot.start, vertices, std::min(count, SlotVertices));
}

}  // namespace qb
