#include "tools/content/Content.h"

namespace qb::content {

void MakeBackgrounds(const std::string&) {}

}  // namespace qb::content
