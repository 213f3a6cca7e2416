#include "tools/content/Content.h"

namespace qb::content {

void MakeSounds(const std::string&) {}

}  // namespace qb::content
