#include "tools/content/Content.h"

namespace qb::content {

void MakeLoadingPicture(const std::string&) {}

}  // namespace qb::content
