// An installed game cannot write into its own folder, so the player gets a
// copy of its track files (levels.dat and the example user tracks) in the
// folder the game writes to, and their fastest times go into that copy.
//
// installed.txt beside the copies says which installed file (size and
// hash) each copy was last made from. At every start a file whose entry is
// missing or different is brought over again: the player's results are
// carried into the new tracks, the result is written to a temporary file,
// flushed, renamed into place and read back. Only then is its entry
// written, so a copy cut short (a full disk, a kill) is made again at the
// next start.
#pragma once

#include <string>
#include <vector>

namespace qb {

struct InstallOutcome {
    // Files brought over this time ("levels.dat", "usertracks/NAME.dat").
    std::vector<std::string> copied;
    // What went wrong, for the player; empty when all is well.
    std::string problem;
    // The player's levels.dat is a track file the game can read.
    bool levelsUsable = false;
};

// gameDir and writeDir end with '/'.
InstallOutcome InstallTrackFiles(const std::string& gameDir, const std::string& writeDir);

}  // namespace qb
