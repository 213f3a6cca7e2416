// A star to collect: a small model spinning on the spot. Driving through it
// (decided by the collision code) hides it for the rest of the run.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Types.h"
#include "world/WorldFrame.h"

namespace qb {

class WorldResources;
struct SharedMesh;

class clsStar {
public:
    explicit clsStar(WorldResources& resources) : res_(resources) {}

    // The star has been collected.
    void GetStar() { visible_ = false; }
    bool visible() const { return visible_; }
    void visible(bool value) { visible_ = value; }
    // Loads the model (skins from the skins folder beside the models folder).
    void load(const std::string& modelFile);
    // Spins 5 degrees while playing, then draws (when visible).
    void draw(const WorldFrame& frame);
    int32_t Xpos() const;  // rounded half to even
    void Xpos(int32_t value) { x_ = static_cast<float>(value); }
    int32_t Ypos() const;
    void Ypos(int32_t value);  // ignored at -1 or below
    int32_t Zpos() const;
    void Zpos(int32_t value);  // ignored at -1 or below

    int32_t spinAngle() const { return spin_; }
    bool hasModel() const { return mesh_ != nullptr; }

private:
    WorldResources& res_;
    const SharedMesh* mesh_ = nullptr;
    int32_t spin_ = 0;
    bool visible_ = false;
    float x_ = 0, y_ = 0, z_ = 0;
};

}  // namespace qb
