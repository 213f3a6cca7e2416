#include "tools/content/Content.h"

namespace qb::content {

void MakeStarModel(const std::string&) {}

}  // namespace qb::content
