// The game's home page, shipped in web/index.html: the web-site item of the
// main menu opens it in the desktop's browser.
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tools/content/GuiStyle.h"

namespace qb::content::gui {

namespace {
const char* const Page = R"(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>Quorbit</title>
<style>
body { margin: 0; background: #141a3a; color: #eef3ff; font-family: "DejaVu Sans", "Liberation Sans", sans-serif; }
header { padding: 48px 24px 32px; text-align: center; background: linear-gradient(#23346e, #141a3a); }
h1 { margin: 0; font-size: 64px; letter-spacing: 6px; color: #3fe0ff; text-shadow: 3px 3px 0 #ff3d8b; }
header p { color: #ffd34a; font-size: 20px; }
main { max-width: 760px; margin: 0 auto; padding: 0 24px 48px; line-height: 1.5; }
h2 { color: #ffd34a; border-bottom: 2px solid #3fe0ff; padding-bottom: 4px; }
table { border-collapse: collapse; }
td { padding: 4px 16px 4px 0; vertical-align: top; }
td:first-child { color: #3fe0ff; font-weight: bold; white-space: nowrap; }
code { background: #23346e; padding: 1px 5px; border-radius: 4px; }
</style>
</head>
<body>
<header>
<h1>QUORBIT</h1>
<p>Race the clock on tracks of floating blocks</p>
</header>
<main>
<h2>The game</h2>
<p>High above the clouds the old racing orbits still float where their builders left them:
roads of blocks, ramps and drifting platforms hanging in the sky. Steer the little orbiter along
them, pick up every star and reach the chequered finish block as fast as you can. The three
fastest drivers of every track have their names written into it.</p>
<h2>Controls</h2>
<table>
<tr><td>Up</td><td>accelerate</td></tr>
<tr><td>Down</td><td>brake</td></tr>
<tr><td>Left / Right</td><td>steer</td></tr>
<tr><td>Space, Shift, Ctrl, Return</td><td>jump</td></tr>
<tr><td>Esc</td><td>pause menu (restart, leave the track, quit)</td></tr>
<tr><td>Menus</td><td>the mouse, or the arrow keys and Return</td></tr>
</table>
<h2>The blocks</h2>
<table>
<tr><td>Finish</td><td>land on it to stop the clock</td></tr>
<tr><td>Bounce pad</td><td>throws you high into the air</td></tr>
<tr><td>Ice</td><td>hardly any grip: you slide on</td></tr>
<tr><td>Falling</td><td>drops away once you are on it</td></tr>
<tr><td>Turbo</td><td>full speed at once</td></tr>
<tr><td>Deadly</td><td>touch it and you blow up</td></tr>
</table>
<h2>Your own tracks</h2>
<p>Write a track source, build it with <code>quorbit-track build -o mytracks.dat mytracks.trk</code>
and drop the file into the <code>usertracks</code> folder of the game. The <em>User tracks</em>
button of the zone choice lists every such file in name order; their fastest times are kept in the
file itself.</p>
<h2>Credits</h2>
<p>Game, tracks and code by the Quorbit team. Every picture, model, sound and tune is made by the
game's own content tool. Lettering in DejaVu Sans.</p>
</main>
</body>
</html>
)";
}  // namespace

void MakeWebPage(const std::string& gameDir) {
    const std::string dir = gameDir + "web/";
    std::filesystem::create_directories(dir);
    std::ofstream out(dir + "index.html", std::ios::binary | std::ios::trunc);
    out << Page;
    if (!out) throw std::runtime_error("cannot write " + dir + "index.html");
}

}  // namespace qb::content::gui
