// The content families the content tool generates, in the order it runs them.
#pragma once

#include <string>
#include <vector>

namespace qb::content {

struct Step {
    const char* name;
    void (*run)(const std::string& gameDir);  // gameDir ends with '/'
};

// Each family lives in its own file(s).
void MakeLoadingPicture(const std::string& gameDir);  // backgrounds/load.jpg
void MakeBackgrounds(const std::string& gameDir);     // backgrounds/: the skies
void MakeTextures(const std::string& gameDir);        // textures/: faces, animation frames
void MakeStarModel(const std::string& gameDir);       // models/orb.x and its skin
void MakePlayerModel(const std::string& gameDir);     // models/player.x and its skin
void MakeMisc(const std::string& gameDir);            // misc/: explosion, particle, shadow
void MakeGui(const std::string& gameDir);             // gui/: buttons and pictures
void MakeSounds(const std::string& gameDir);          // sfx/ and music/
void MakeIcon(const std::string& gameDir);            // icons/quorbit.png for the desktop

inline std::vector<Step> AllSteps() {
    return {{"loading picture", MakeLoadingPicture},
            {"skies", MakeBackgrounds},
            {"textures", MakeTextures},
            {"star model", MakeStarModel},
            {"player model", MakePlayerModel},
            {"misc", MakeMisc},
            {"gui", MakeGui},
            {"sounds", MakeSounds},
            {"icon", MakeIcon}};
}

}  // namespace qb::content
