// Words and number spellings shared by the track source reader and printer.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace qb::tracktext {

// Block kinds by action code.
inline constexpr std::array<std::string_view, 7> kKindNames{"plain",   "finish", "bounce", "ice",
                                                            "falling", "turbo",  "deadly"};

struct TypeName {
    std::string_view name;
    uint16_t code;
};
// Stored types of the texture count.
inline constexpr std::array<TypeName, 13> kTypeNames{{{"int16", 2},
                                                      {"int32", 3},
                                                      {"float", 4},
                                                      {"double", 5},
                                                      {"currency", 6},
                                                      {"int8", 16},
                                                      {"byte", 17},
                                                      {"uint16", 18},
                                                      {"uint32", 19},
                                                      {"int64", 20},
                                                      {"uint64", 21},
                                                      {"int", 22},
                                                      {"uint", 23}}};

// Words that cannot name a texture because they mean something on an
// object line.
bool IsReservedWord(std::string_view w);
bool IsIdentifier(std::string_view w);

// Shortest text that reads back to the same bits; non-finite values as
// 0x and their raw bits.
std::string FormatFloat(float f);
std::string FormatDouble(double d);
bool ParseFloat(std::string_view s, float& out);
bool ParseDouble(std::string_view s, double& out);
// Decimal or 0x hexadecimal, within [lo, hi].
bool ParseInteger(std::string_view s, int64_t lo, int64_t hi, int64_t& out);
bool ParseUnsigned64(std::string_view s, uint64_t& out);

// A quoted string with \" \\ and \xHH escapes for anything outside
// printable ASCII.
std::string Quote(std::string_view raw);

}  // namespace qb::tracktext
