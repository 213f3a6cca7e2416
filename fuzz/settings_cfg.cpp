// settings.cfg reader: any bytes read without a crash, and what is written back
// is UTF-8 text that reads again without a single complaint and to the same
// text and values.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/fuzz_common.h"
#include "persist/Settings.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    qb::Settings first("settings.cfg");
    first.LoadText(std::string(reinterpret_cast<const char*>(data), size));
    const std::string text = first.Text();
    qb::Settings second("settings.cfg");
    second.LoadText(text);
    FUZZ_CHECK(second.problems().empty());
    FUZZ_CHECK(second.Text() == text);
    for (const char* key : {"a", "keys.jump", "race.ghost"}) {
        FUZZ_CHECK(first.GetString(key, "-") == second.GetString(key, "-"));
        FUZZ_CHECK(first.GetInt(key, 7) == second.GetInt(key, 7));
    }
    return 0;
}
