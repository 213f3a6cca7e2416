// quorbit-sim: drives a track headless from a key script and prints the car's
// state after every frame as CSV.
#include <iostream>
#include <string>
#include <vector>

#include "shell/SimDriver.h"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    const std::vector<std::string> args(argv + 1, argv + argc);
    return qb::RunSimulator(args, std::cout, std::cerr);
}
