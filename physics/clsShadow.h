#pragma once

namespace qb {

class clsShadow {
public:
    bool create() { return true; }
};

}  // namespace qb
