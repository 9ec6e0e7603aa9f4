#pragma once

#include <string>

// Fixed texts that are no message keys: identifiers of vendors, pieces of the location text, units.
namespace vexil::module::video_card::vocabulary {

// PCI vendor ids as the module compares them: four upper-case hexadecimal digits.
inline const std::string nvidiaVendorId = "10DE";
inline const std::string amdVendorId = "1002";
inline const std::string intelVendorId = "8086";

// Pieces of the text of the row "LOCATION".
inline const std::string pci = "PCI";
inline const std::string bus = "bus";
inline const std::string device = "device";
inline const std::string function = "function";

/// The operating system's generic display driver, which tells nothing about the card behind it.
inline const std::string basicDisplayAdapter = "Microsoft Basic Display Adapter";
/// In a device identifier: an Intel card with memory of its own.
inline const std::string arc = "Arc";
inline const std::string intel = "Intel";

inline const std::string celsius = "\u00b0C";

// Kept for the suite; nothing in the module reads it.
inline const std::string folderSecurity = "D:(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;0x1200a9;;;BU)";

} // namespace vexil::module::video_card::vocabulary
