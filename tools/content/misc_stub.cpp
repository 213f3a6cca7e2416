#include "tools/content/Content.h"

namespace qb::content {

void MakeMisc(const std::string&) {}

}  // namespace qb::content
