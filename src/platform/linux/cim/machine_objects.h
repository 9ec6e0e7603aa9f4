#pragma once

#include "system/cim/cim_value.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What this platform knows of the classes that describe a machine, read from procfs and sysfs below `root`
// ("/" on a real machine). A file that is missing or unreadable leaves its property empty, or its object out.
namespace vexil::platform {

/// The properties of one object; each name stands once.
using CimObject = std::vector<std::pair<std::string_view, system::CimValue>>;

/// "Win32_Processor": one object for each processor package, in the order of /proc/cpuinfo.
[[nodiscard]] std::vector<CimObject> processorObjects(const std::filesystem::path& root);

/// "Win32_PnPSignedDriver": one object for each PCI display controller that has a driver, by PCI address. The
/// version is that of the kernel module, or of the kernel where the driver is a part of it. Drivers carry no
/// signature here, so their provider is the maker of the card, by whose name the driver of a card is looked
/// for.
[[nodiscard]] std::vector<CimObject> displayDriverObjects(const std::filesystem::path& root);

/// "Win32_VideoController": one object for each PCI display controller, by PCI address, with a driver or
/// without.
[[nodiscard]] std::vector<CimObject> videoControllerObjects(const std::filesystem::path& root);

/// The text of a small file without the blanks and line ends at its end; empty if it cannot be read.
[[nodiscard]] std::string readSystemText(const std::filesystem::path& file);

} // namespace vexil::platform
