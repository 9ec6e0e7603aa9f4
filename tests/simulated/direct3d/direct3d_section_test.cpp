#include "simulated/scenario/direct3d_section.h"
#include "simulated/scenario/scenario.h"
#include "support/test_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <limits>
#include <string>

namespace vexil::simulated {
namespace {

/// A scenario of one card with this section.
Scenario scenarioWith(const std::string& section) {
    const auto file = tests::testFolder() / "direct3d_section.json";
    std::ofstream(file)
        << R"({"schema": "vexil.scenario/1", "cards": [{"vendorId": "10DE", "deviceId": "2503",
                               "location": "01:00.0", "direct3d": )" +
               section + "}]}";
    return loadScenario(file.string());
}

Direct3DSection read(const std::string& section) { return scenarioWith(section).cards.at(0).direct3d; }

Direct3DFault readFault(const std::string& fault) {
    return read("{\"faults\": [" + fault + "]}").faults.at(0);
}

/// The error of a section, without the file.
std::string errorOf(const std::string& section) {
    try {
        static_cast<void>(scenarioWith(section));
        return {};
    } catch (const ScenarioError& error) {
        const std::string text = error.what();
        return text.substr(text.find("cards[0]"));
    }
}

std::string errorOfFault(const std::string& fault) { return errorOf("{\"faults\": [" + fault + "]}"); }

TEST(Direct3DSection, IsAHealthyCardOfAGibibyteWhenEmpty) {
    const auto section = read("{}");
    EXPECT_TRUE(section.present);
    EXPECT_EQ(section.description, "");
    EXPECT_EQ(section.dedicatedMemory, 1U << 30);
    EXPECT_EQ(section.sharedMemory, 1U << 30);
    EXPECT_FALSE(section.memoryBudget);
    EXPECT_FALSE(section.oneSurfaceMemory);
    EXPECT_TRUE(section.faults.empty());
}

TEST(Direct3DSection, ReadsEveryField) {
    const auto section = read(R"({"present": false, "description": "Other name", "dedicatedMemory": 1,
                                  "sharedMemory": "0x10", "memoryBudget": 3, "oneSurfaceMemory": true})");
    EXPECT_FALSE(section.present);
    EXPECT_EQ(section.description, "Other name");
    EXPECT_EQ(section.dedicatedMemory, 1U);
    EXPECT_EQ(section.sharedMemory, 16U);
    EXPECT_EQ(section.memoryBudget, 3U);
    EXPECT_TRUE(section.oneSurfaceMemory);
}

TEST(Direct3DSection, ReadsTheFaultsOfTheStressTests) {
    using Kind = Direct3DFault::Kind;
    const auto pixel =
        readFault(R"({"kind": "differingPixel", "from": 2.5, "until": 4, "x": 10, "y": 20, "mask": "0x80"})");
    EXPECT_EQ(pixel.kind, Kind::differingPixel);
    EXPECT_EQ(pixel.picture.from, 2.5);
    EXPECT_EQ(pixel.picture.until, 4);
    EXPECT_EQ(pixel.picture.x, 10U);
    EXPECT_EQ(pixel.picture.y, 20U);
    EXPECT_EQ(pixel.picture.fromPeriod, 1U);
    EXPECT_EQ(pixel.mask, 0x80);
    const auto late = readFault(R"({"kind": "differingPixel", "fromPeriod": 3, "x": 0, "y": 0})");
    EXPECT_EQ(late.picture.fromPeriod, 3U);
    const auto always = readFault(R"({"kind": "differingPixel", "x": 0, "y": 0})");
    EXPECT_EQ(always.picture.from, 0);
    EXPECT_EQ(always.picture.until, std::numeric_limits<double>::infinity());
    EXPECT_EQ(always.mask, 1);
    const auto gone = readFault(R"({"kind": "removedInDrawing", "drawing": 9})");
    EXPECT_EQ(gone.kind, Kind::removedInDrawing);
    EXPECT_EQ(gone.number, 9U);
    EXPECT_EQ(gone.result, 0x887A0005U);
    const auto lost = readFault(R"({"kind": "lostCall", "call": "OMSetRenderTargets", "number": 2})");
    EXPECT_EQ(lost.kind, Kind::lostCall);
    EXPECT_EQ(lost.call, "OMSetRenderTargets");
    EXPECT_EQ(lost.number, 2U);
    EXPECT_EQ(readFault(R"({"kind": "failingCall", "call": "CreateSwapChain"})").call, "CreateSwapChain");
}

TEST(Direct3DSection, RefusesATimeOfAPixelThatEndsBeforeItBegins) {
    EXPECT_NE(errorOfFault(R"({"kind": "differingPixel", "from": 3, "until": 2, "x": 0, "y": 0})"), "");
    EXPECT_NE(errorOfFault(R"({"kind": "lostCall", "call": "Map"})"), "") << "it has a result";
}

TEST(Direct3DSection, ReadsEveryKindOfFault) {
    using Kind = Direct3DFault::Kind;
    const auto allocation = readFault(R"({"kind": "surfaceAllocation", "surface": 5})");
    EXPECT_EQ(allocation.kind, Kind::surfaceAllocation);
    EXPECT_EQ(allocation.number, 5U);
    EXPECT_EQ(allocation.result, 0x8007000EU);
    EXPECT_EQ(readFault(R"({"kind": "surfaceAllocation", "surface": 5, "result": "E_FAIL"})").result,
              0x80004005U);

    const auto byte =
        readFault(R"({"kind": "changedByte", "surface": 3, "offset": "0x3FFFFF", "mask": 255})");
    EXPECT_EQ(byte.kind, Kind::changedByte);
    EXPECT_EQ(byte.number, 3U);
    EXPECT_EQ(byte.offset, 0x3FFFFFU);
    EXPECT_EQ(byte.mask, 255U);
    EXPECT_EQ(readFault(R"({"kind": "changedByte", "surface": 3})").mask, 1U);

    const auto removal = readFault(R"({"kind": "deviceRemoved", "surface": 0})");
    EXPECT_EQ(removal.kind, Kind::deviceRemoved);
    EXPECT_EQ(removal.number, 0U);
    EXPECT_EQ(removal.result, 0x887A0005U);

    const auto call =
        readFault(R"({"kind": "failingCall", "call": "Map", "number": 7, "result": "0x80070057"})");
    EXPECT_EQ(call.kind, Kind::failingCall);
    EXPECT_EQ(call.call, "Map");
    EXPECT_EQ(call.number, 7U);
    EXPECT_EQ(call.result, 0x80070057U);
    EXPECT_EQ(readFault(R"({"kind": "failingCall", "call": "D3D11CreateDevice"})").number, 1U);

    EXPECT_EQ(readFault(R"({"kind": "noResolveSupport"})").kind, Kind::noResolveSupport);
}

TEST(Direct3DSection, ReadsEveryFaultOfTheArithmeticTests) {
    using Kind = Direct3DFault::Kind;
    using Change = ArithmeticFault::Change;
    const auto result =
        readFault(R"({"kind": "wrongResult", "set": "doubles", "row": 3, "column": 4, "change": "ulp"})");
    EXPECT_EQ(result.kind, Kind::wrongResult);
    EXPECT_EQ(result.arithmetic.set, OperationSet::doubles);
    EXPECT_EQ(result.arithmetic.row, 3U);
    EXPECT_EQ(result.arithmetic.column, 4U);
    EXPECT_EQ(result.arithmetic.change, Change::ulp);

    const auto operand = readFault(
        R"({"kind": "wrongOperand", "set": "dotProducts", "operand": 5, "row": 0, "change": "sign"})");
    EXPECT_EQ(operand.kind, Kind::wrongOperand);
    EXPECT_EQ(operand.arithmetic.set, OperationSet::dotProducts);
    EXPECT_EQ(operand.arithmetic.operand, 5U);
    EXPECT_EQ(operand.arithmetic.column, 0U);
    EXPECT_EQ(operand.arithmetic.change, Change::sign);

    EXPECT_EQ(readFault(R"({"kind": "idleDispatch", "set": "floats"})").arithmetic.set, OperationSet::floats);
    EXPECT_EQ(readFault(R"({"kind": "noDoubles"})").kind, Kind::noDoubles);
}

TEST(Direct3DSection, ReadsEveryFaultOfPictures) {
    using Kind = Direct3DFault::Kind;
    const auto pixel = readFault(R"({"kind": "wrongPixel", "drawing": 9, "x": 7, "y": 3})");
    EXPECT_EQ(pixel.kind, Kind::wrongPixel);
    EXPECT_EQ(pixel.number, 9U);
    EXPECT_EQ(pixel.offset, (3U * 1024 + 7) * 4);
    EXPECT_EQ(pixel.mask, 1U);
    const auto pitch = readFault(R"({"kind": "mappedPitch", "gap": 256})");
    EXPECT_EQ(pitch.kind, Kind::mappedPitch);
    EXPECT_EQ(pitch.offset, 256U);
}

TEST(Direct3DSection, NamesTheFieldAndTheReasonOfAnError) {
    EXPECT_EQ(errorOf(R"({"present": 1})"), "cards[0].direct3d.present: must be true or false, is 1");
    EXPECT_TRUE(errorOf(R"({"memory": 1})").starts_with("cards[0].direct3d.memory: is not a field"));
    EXPECT_EQ(errorOfFault(R"({"kind": "fire"})"), "cards[0].direct3d.faults[0].kind: \"fire\" is none of "
                                                   "surfaceAllocation, changedByte, deviceRemoved, "
                                                   "failingCall, noResolveSupport, noDoubles, wrongResult, "
                                                   "wrongOperand, idleDispatch, wrongPixel, mappedPitch, "
                                                   "differingPixel, removedInDrawing, lostCall");
    EXPECT_TRUE(errorOfFault(R"({"kind": "surfaceAllocation", "surface": 0})")
                    .starts_with("cards[0].direct3d.faults[0].surface: must be a whole number from 1"));
    EXPECT_EQ(errorOfFault(R"({"kind": "changedByte"})"), "cards[0].direct3d.faults[0].surface: is missing");
    EXPECT_TRUE(
        errorOfFault(R"({"kind": "changedByte", "surface": 1, "offset": 4194304})")
            .starts_with("cards[0].direct3d.faults[0].offset: must be a whole number from 0 to 4194303"));
    EXPECT_TRUE(errorOfFault(R"({"kind": "changedByte", "surface": 1, "mask": 0})")
                    .starts_with("cards[0].direct3d.faults[0].mask: "));
    EXPECT_TRUE(errorOfFault(R"({"kind": "failingCall", "call": "Draw"})")
                    .starts_with("cards[0].direct3d.faults[0].call: \"Draw\" is none of "));
    EXPECT_EQ(errorOfFault(R"({"kind": "deviceRemoved", "surface": 1, "result": 0})"),
              "cards[0].direct3d.faults[0].result: must be the code of a failure (0x80000000 and above)");
    EXPECT_TRUE(errorOfFault(R"({"kind": "noResolveSupport", "surface": 1})")
                    .starts_with("cards[0].direct3d.faults[0].surface: is not a field"));
}

} // namespace
} // namespace vexil::simulated
