// The tops of the special blocks and of the moving platforms. Each carries
// one bold symbol of its own shape with a strong light/dark pattern, so the
// kinds tell apart in grey and to colour-blind eyes as well as by colour:
// finish a chequer, bounce a target, ice a snowflake, falling a downward
// wedge, turbo a lightning bolt, deadly a cross, platform a two-way arrow.
#pragma once

#include "tools/content/WorldPaint.h"

namespace qb::content {

constexpr int SymbolTileSize = 128;

Canvas FinishTile();
Canvas BounceTile();
Canvas IceTile();
Canvas FallingTile();
Canvas TurboTile();
Canvas DeadlyTile();
Canvas PlatformTile();

// A filled polygon, anti-aliased by 4 x 4 supersampling.
void FillPolygon(Canvas& c, const std::vector<std::pair<float, float>>& points, const Rgb& colour,
                 float alpha = 1);

}  // namespace qb::content
