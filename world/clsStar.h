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
    // One play frame of the spin: 5 degrees (nothing outside play or once
    // collected).
    void Spin(const WorldFrame& frame);
    // Draws the star (when visible) turned `blend` of the way from the angle
    // of the last play frame to the present one (1: the present one).
    void draw(float blend = 1.0f);
    // The present angle becomes the one drawings start from.
    void KeepDrawnState() { drawnSpin_ = spin_; }
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
    int32_t drawnSpin_ = 0;
    bool visible_ = false;
    float x_ = 0, y_ = 0, z_ = 0;
};

}  // namespace qb
