#include "shell/KeyTimeline.h"

#include <algorithm>
#include <map>

namespace qb {

KeyTimeline::KeyTimeline(const KeyScript& script) : frames_(script.TotalFrames()) {
    std::map<uint8_t, int64_t> down;  // key -> frame it went down
    int64_t frame = 0;
    for (const KeyStep& step : script.steps) {
        if (step.count <= 0) continue;
        for (auto it = down.begin(); it != down.end();) {
            if (std::find(step.keys.begin(), step.keys.end(), it->first) == step.keys.end()) {
                holds_.push_back({it->first, it->second, frame, false});
                it = down.erase(it);
            } else {
                ++it;
            }
        }
        for (uint8_t k : step.keys) down.emplace(k, frame);
        frame += step.count;
    }
    for (const auto& [key, from] : down) holds_.push_back({key, from, frame, true});
    std::stable_sort(holds_.begin(), holds_.end(),
                     [](const KeyHold& a, const KeyHold& b) { return a.from < b.from; });
}

int64_t KeyTimeline::KeyChanges() const {
    std::vector<int64_t> edges;
    for (const KeyHold& h : holds_) {
        edges.push_back(h.from);
        if (!h.open) edges.push_back(h.to);
    }
    std::sort(edges.begin(), edges.end());
    return std::unique(edges.begin(), edges.end()) - edges.begin();
}

std::vector<int> KeyTimeline::MovableEdges() const {
    std::vector<int> out;
    for (size_t i = 0; i < holds_.size(); ++i) {
        // A press at the very start stands for "from the go": not a timing.
        if (holds_[i].from > 0) out.push_back(static_cast<int>(2 * i));
        if (!holds_[i].open) out.push_back(static_cast<int>(2 * i + 1));
    }
    return out;
}

int64_t KeyTimeline::EdgeFrame(int edge) const {
    const KeyHold& h = holds_[static_cast<size_t>(edge / 2)];
    return edge % 2 == 0 ? h.from : h.to;
}

void KeyTimeline::Clamp(KeyHold& h) const {
    h.from = std::max<int64_t>(0, h.from);
    if (h.to <= h.from) h.to = h.from + 1;
}

KeyTimeline KeyTimeline::Shifted(int edge, int64_t delta) const {
    KeyTimeline out = *this;
    KeyHold& h = out.holds_[static_cast<size_t>(edge / 2)];
    if (edge % 2 == 0) {
        h.from += delta;
        if (h.from >= h.to) h.from = h.to - 1;
    } else {
        h.to += delta;
    }
    out.Clamp(h);
    return out;
}

KeyTimeline KeyTimeline::Jittered(std::mt19937& random, int maxShift) const {
    KeyTimeline out = *this;
    const uint32_t span = static_cast<uint32_t>(2 * maxShift + 1);
    for (KeyHold& h : out.holds_) {
        // Drawn for every edge, used or not, so one script's draws never
        // depend on how another edge was placed.
        const int64_t a = static_cast<int64_t>(random() % span) - maxShift;
        const int64_t b = static_cast<int64_t>(random() % span) - maxShift;
        if (h.from > 0) h.from += a;
        if (!h.open) h.to += b;
        out.Clamp(h);
    }
    return out;
}

KeyScript KeyTimeline::ToScript(int64_t extra) const {
    int64_t end = frames_ + extra;
    for (const KeyHold& h : holds_) end = std::max(end, h.to);
    std::vector<std::vector<uint8_t>> perFrame(static_cast<size_t>(end));
    for (const KeyHold& h : holds_) {
        const int64_t to = h.open ? end : h.to;
        for (int64_t f = h.from; f < to; ++f) {
            auto& keys = perFrame[static_cast<size_t>(f)];
            if (std::find(keys.begin(), keys.end(), h.key) == keys.end()) keys.push_back(h.key);
        }
    }
    KeyScript out;
    for (auto& keys : perFrame) {
        std::sort(keys.begin(), keys.end());
        if (!out.steps.empty() && out.steps.back().keys == keys)
            out.steps.back().count += 1;
        else
            out.steps.push_back({1, keys});
    }
    return out;
}

}  // namespace qb
