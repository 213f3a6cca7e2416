#include "tools/content/Content.h"

namespace qb::content {

void MakePlayerModel(const std::string&) {}

}  // namespace qb::content
