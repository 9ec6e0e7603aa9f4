#pragma once

#include "host/core/utf8_path.h"
#include "host/platform/process.h"
#include "host/subprocess.h"
#include "support/environment.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vexil::host {

/// vxe-host in a process of its own, with the module that asks.
class AskingProgram : public ::testing::Test {
protected:
    AskingProgram() {
        // Empty is absent to all who read these.
        vexil::tests::setEnvironment("QT_QPA_PLATFORM", "");
        vexil::tests::setEnvironment("LC_ALL", "C");
    }

    static tests::ProgramEnd run(std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), {"--module", toUtf8(platform::programFolder() / "fake_modules" /
                                                              VEXIL_ASKING_MODULE_FILE)});
        return tests::runProgram(arguments);
    }
    static tests::ProgramEnd runTests(const std::string& ids) {
        return run({"--machine", "real", "--language", "en", "run", "--card", "0100", "--tests", ids});
    }
};

} // namespace vexil::host
