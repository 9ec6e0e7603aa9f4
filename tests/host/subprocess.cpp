#include "host/subprocess.h"

#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

namespace vexil::host::tests {

namespace {

std::string takeContents(const std::filesystem::path& file) {
    std::string text;
    {
        std::ifstream stream(file, std::ios::binary);
        text.assign(std::istreambuf_iterator<char>(stream), {});
    }
    std::filesystem::remove(file);
    std::erase(text, '\r');
    return text;
}

std::string inQuotationMarks(const std::string& text) { return '"' + text + '"'; }

} // namespace

ProgramEnd runProgram(const std::vector<std::string>& arguments) {
    const auto base = vexil::tests::testFolder() / "vxe-host";
    auto command = inQuotationMarks(toUtf8(platform::programFolder() / "vxe-host"));
    for (const auto& argument : arguments) {
        command += ' ' + inQuotationMarks(argument);
    }
    const auto out = base.string() + ".out";
    const auto err = base.string() + ".err";
    command += " > " + inQuotationMarks(out) + " 2> " + inQuotationMarks(err);
#ifdef _WIN32
    // The command interpreter takes one pair of quotation marks off the whole line.
    const int code = std::system(inQuotationMarks(command).c_str());
#else
    // The upper byte of a wait status is the exit code; a shell makes a signal one.
    const int code = std::system(command.c_str()) >> 8;
#endif
    return {code, takeContents(out), takeContents(err)};
}

} // namespace vexil::host::tests
