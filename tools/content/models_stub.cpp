#include "tools/content/Content.h"

namespace qb::content {

void MakeModels(const std::string&) {}

}  // namespace qb::content
