#include "platform/linux/cim/machine_objects.h"

#include <fstream>

namespace vexil::platform {

std::string readSystemText(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string text;
    // Unlike an iterator, getline does not throw where the kernel refuses to read an open file.
    std::getline(stream, text, '\0');
    text.erase(text.find_last_not_of(" \t\n") + 1);
    return text;
}

} // namespace vexil::platform
