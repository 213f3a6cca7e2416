#include "tools/content/Content.h"

namespace qb::content {

void MakeTextures(const std::string&) {}

}  // namespace qb::content
