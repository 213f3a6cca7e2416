#include "Route.h"

#include <algorithm>
#include <cmath>
#include <sstream>

#include "level/TrackObjects.h"
#include "physics/clsPlayer.h"
#include "shell/frmGame.h"
#include "world/clsMovingPlatform.h"

namespace qb {

namespace {
constexpr uint8_t KeyUp = 200, KeyDown = 208, KeyLeft = 203, KeyRight = 205, KeySpace = 57;
}

bool ParseRoute(const std::string& text, std::vector<RouteCommand>& out, std::string& error) {
    out.clear();
    std::istringstream in(text);
    std::string line;
    int number = 0;
    while (std::getline(in, line)) {
        ++number;
        if (auto hash = line.find('#'); hash != std::string::npos) line.erase(hash);
        std::istringstream words(line);
        std::string op, arg;
        RouteCommand c;
        if (!(words >> c.z)) {
            words.clear();
            std::string rest;
            if (words >> rest) {
                error = "line " + std::to_string(number) + ": a command starts with the z it takes effect at";
                return false;
            }
            continue;
        }
        if (!(words >> op)) {
            error = "line " + std::to_string(number) + ": no command after the z";
            return false;
        }
        const bool hasArg = static_cast<bool>(words >> arg);
        auto number_arg = [&](double& v) {
            try {
                size_t used = 0;
                v = std::stod(arg, &used);
                return hasArg && used == arg.size();
            } catch (...) {
                return false;
            }
        };
        bool ok = true;
        if (op == "x" && arg == "free") {
            c.op = RouteCommand::FreeLane;
        } else if (op == "x") {
            c.op = RouteCommand::Lane;
            ok = number_arg(c.value);
        } else if (op == "speed") {
            c.op = RouteCommand::Speed;
            ok = number_arg(c.value);
        } else if (op == "ride") {
            c.op = RouteCommand::Ride;
            ok = number_arg(c.value);
        } else if (op == "board") {
            c.op = RouteCommand::Board;
            ok = number_arg(c.value);
        } else if (op == "jump" || op == "hold" || op == "release") {
            c.op = op == "jump"   ? RouteCommand::Jump
                   : op == "hold" ? RouteCommand::Hold
                                  : RouteCommand::Release;
            ok = !hasArg;
        } else {
            ok = false;
        }
        if (!ok) {
            error = "line " + std::to_string(number) + ": cannot read \"" + line + "\"";
            return false;
        }
        out.push_back(c);
    }
    return true;
}

// Steps a copy of the platform's motion forward and asks whether it stays
// under the car while the car, setting off now from where it stands, rolls
// from the platform's front edge until it is well on board.
bool Autopilot::PlatformWillCarry(frmGame& game, int index) const {
    const TrackObjects& t = *game.track;
    if (index < 0 || index > t.PlatformUpper) return true;
    const clsMovingPlatform& p = *t.platforms[static_cast<size_t>(index)];
    const Vector3 car = game.player->GetPosition();
    double x = p.Xpos(), origin = p.origin().x;
    int dir = p.Mdir();
    const double v = p.Mspeed() / 100.0, dist = p.Mdist(), width = p.scaleX();
    const bool loop = p.MloopBack();
    double carZ = car.z, carV = game.player->GetVelocity().z;
    for (int n = 0; n < 200; ++n) {
        if (carV < 0.6) carV += 0.02;
        carZ += carV;
        if (dir == 2 || dir == 3) {
            const double step = dir == 2 ? -v : v;
            const double limit = dir == 2 ? origin - dist : origin + dist;
            const double next = x + step;
            if ((dir == 2 && next >= limit) || (dir == 3 && next <= limit)) {
                x = next;
            } else if (loop) {
                x = limit;
                origin = x;
                dir = dir == 2 ? 3 : 2;
            } else {
                x = origin;
            }
        }
        if (carZ < p.Zpos() - 0.3) continue;
        if (carZ > p.Zpos() + 3.0) return true;
        if (car.x < x + 0.55 || car.x > x + width - 0.55) return false;
    }
    return true;
}

std::vector<uint8_t> Autopilot::Keys(frmGame& game) {
    return LikeHands(Wanted(game));
}

std::vector<uint8_t> Autopilot::LikeHands(const std::vector<uint8_t>& wanted) {
    auto want = [&](uint8_t k) { return std::find(wanted.begin(), wanted.end(), k) != wanted.end(); };
    auto down = [&](uint8_t k) { return since_[k] > 0; };
    std::vector<uint8_t> out;
    for (uint8_t k : {KeyUp, KeyDown, KeyLeft, KeyRight, KeySpace}) {
        bool press = want(k);
        if (down(k) && since_[k] < MinHold) press = true;          // not yet held long enough
        if (since_[k] < 0 && since_[k] > -MinHold) press = false;  // just let go
        out.push_back(press ? k : 0);
    }
    // One steering key at a time: one still held for its minimum wins.
    auto& left = out[2];
    auto& right = out[3];
    if (left && right) {
        if (down(KeyLeft) && since_[KeyLeft] < MinHold)
            right = 0;
        else
            left = 0;
    }
    std::vector<uint8_t> keys;
    for (uint8_t k : {KeyUp, KeyDown, KeyLeft, KeyRight, KeySpace}) {
        const bool pressed = std::find(out.begin(), out.end(), k) != out.end();
        if (pressed) {
            since_[k] = since_[k] > 0 ? since_[k] + 1 : 1;
            keys.push_back(k);
        } else {
            since_[k] = since_[k] < 0 ? since_[k] - 1 : -1;
        }
    }
    return keys;
}

std::vector<uint8_t> Autopilot::Wanted(frmGame& game) {
    const clsPlayer& pl = *game.player;
    const Vector3 pos = pl.GetPosition();
    const Vector4 vel = pl.GetVelocity();
    while (boarding_ < 0 && next_ < route_.size() && route_[next_].z <= pos.z) {
        const RouteCommand& c = route_[next_++];
        switch (c.op) {
            case RouteCommand::Lane:
                steer_ = true;
                riding_ = -1;
                laneX_ = c.value;
                break;
            case RouteCommand::FreeLane:
                steer_ = false;
                riding_ = -1;
                break;
            case RouteCommand::Ride:
                steer_ = true;
                riding_ = static_cast<int>(c.value);
                break;
            case RouteCommand::Speed:
                speed_ = c.value;
                break;
            case RouteCommand::Jump:
                jumpPending_ = true;
                break;
            case RouteCommand::Hold:
                holdJump_ = true;
                break;
            case RouteCommand::Release:
                holdJump_ = false;
                break;
            case RouteCommand::Board:
                boarding_ = static_cast<int>(c.value);
                break;
        }
    }
    std::vector<uint8_t> keys;
    bool braking = false;
    if (boarding_ >= 0) {
        // Stand still for a moment before setting off: Down let go a little
        // early must not leave the car creeping.
        stoppedFor_ = vel.z > 0 ? 0 : stoppedFor_ + 1;
        if (vel.z > 0 || stoppedFor_ < 5) {
            braking = true;
        } else if (PlatformWillCarry(game, boarding_)) {
            boarding_ = -1;
        } else {
            braking = true;
        }
    }
    // At full speed Up stays held: letting it go a frame early would leave
    // the car slower for the rest of the track.
    if (braking || vel.z > speed_ + 0.03) {
        keys.push_back(KeyDown);
    } else if (vel.z < speed_ - 1e-4 || speed_ >= 0.6 - 1e-6) {
        keys.push_back(KeyUp);
    }
    if (riding_ >= 0 && riding_ <= game.track->PlatformUpper) {
        const clsMovingPlatform& p = *game.track->platforms[static_cast<size_t>(riding_)];
        laneX_ = p.Xpos() + p.scaleX() / 2;
    }
    // No steering in the air: a car over a kerb's height would sail across it.
    if (steer_ && game.OnGround) {
        const double dx = laneX_ - pos.x;
        // Hands do not correct a quarter of a unit: three frames of steering
        // move the car further than that.
        const double deadZone = pl.ISPlayerOnAnIceBlock() ? 0.0 : 0.25;
        if (dx > deadZone) keys.push_back(KeyRight);
        if (dx < -deadZone) keys.push_back(KeyLeft);
    }
    if (holdJump_ || (jumpPending_ && game.OnGround)) {
        keys.push_back(KeySpace);
        jumpPending_ = false;
    }
    return keys;
}

}  // namespace qb
