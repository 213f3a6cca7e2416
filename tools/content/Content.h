// The content families the content tool generates, in the order it runs them.
#pragma once

#include <string>
#include <vector>

namespace qb::content {

struct Step {
    const char* name;
    void (*run)(const std::string& gameDir);  // gameDir ends with '/'
};

// Each family lives in its own file.
void MakeBackgrounds(const std::string& gameDir);  // backgrounds/: load.jpg, skies
void MakeTextures(const std::string& gameDir);     // textures/: faces, animation frames
void MakeModels(const std::string& gameDir);       // models/ and skins/
void MakeMisc(const std::string& gameDir);         // misc/: explosion, particle, shadow
void MakeGui(const std::string& gameDir);          // gui/: buttons and pictures
void MakeSounds(const std::string& gameDir);       // sfx/ and music/

inline std::vector<Step> AllSteps() {
    return {{"backgrounds", MakeBackgrounds}, {"textures", MakeTextures}, {"models", MakeModels},
            {"misc", MakeMisc},               {"gui", MakeGui},           {"sounds", MakeSounds}};
}

}  // namespace qb::content
