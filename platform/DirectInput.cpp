#include "platform/DirectInput.h"

#include "platform/QuorbitDebug.h"
#include "platform/Window.h"

namespace qb {

DirectInput::DirectInput(KeyboardDevice& device, QuorbitDebug& log, Window& window)
    : keyboard(device), log_(log), window_(window) {}

bool DirectInput::InitialiseKeyboard() {
    log_.WriteLine("Using Polling Method for Direct Input");
    KeyboardInfo info;
    if (!keyboard.acquire(info)) {
        window_.messageBox("Error occured trying to initalise Direct Input");
        return false;
    }
    log_.WriteEmptyLine();
    log_.WriteLine("Keyboard Information");
    log_.WriteLine("Product Name : " + info.productName);
    log_.WriteLine("Device Type : " + std::to_string(info.deviceType));
    log_.WriteLine("GUID : " + info.guidInstance);
    log_.WriteEmptyLine();
    return true;
}

std::string Trim(const std::string& text) {
    size_t b = 0, e = text.size();
    while (b < e && static_cast<unsigned char>(text[b]) <= 32) ++b;
    while (e > b && static_cast<unsigned char>(text[e - 1]) <= 32) --e;
    return text.substr(b, e - b);
}

}  // namespace qb
