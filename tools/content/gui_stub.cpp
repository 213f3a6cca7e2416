#include "tools/content/Content.h"

namespace qb::content {

void MakeGui(const std::string&) {}

}  // namespace qb::content
