// The lint verb of quorbit-track: the track checker on the command line.
#pragma once

#include <string>
#include <vector>

namespace qb {
int LintCommand(const std::vector<std::string>& args);
}
